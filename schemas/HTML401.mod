<!--
  HTML401.mod: HTML 4.01 and XHTML 1.0, written once.

  Strict, Transitional and Frameset differ in some elements and attributes, HTML and
  XHTML in which tags may be left out and in a few attributes. strict.dtd, frameset.dtd
  and the three xhtml1-*.dtd set the switches and include this file:

    HTML.transitional   INCLUDE for Transitional and Frameset, IGNORE for Strict
    HTML.frameset       INCLUDE for Frameset
    HTML.xml            INCLUDE for XHTML: no tag may be left out, xml:lang, xmlns
    HTML.sgml           the opposite of HTML.xml

  The first declaration of an entity binds, so what a section declares wins over the
  declaration behind it. Each section is read wherever it stands; only whole
  declarations can be switched, not parts of one.

  These are the standards of 1999 and 2000, unchanged. HTML as browsers take it today,
  with 4.01 Transitional in it, is loose.dtd, and shares nothing but values and
  characters with this file: nearly every model and every list of attributes differs.
-->

<!ENTITY % HTMLsymbol PUBLIC "-//W3C//ENTITIES Symbols//EN//HTML" "HTMLsymbol.ent">
%HTMLsymbol;
<!ENTITY % HTMLspecial PUBLIC "-//W3C//ENTITIES Special//EN//HTML" "HTMLspecial.ent">
%HTMLspecial;
<!ENTITY % HTMLlat1 PUBLIC "-//W3C//ENTITIES Latin1//EN//HTML" "HTMLlat1.ent">
%HTMLlat1;

<!ENTITY % HTMLvalues PUBLIC "" "HTMLvalues.mod">
%HTMLvalues;


<!-- ===== Tags that may be left out =============================================== -->

<![%HTML.xml;[
<!ENTITY apos "&#x27;">
<!ENTITY % endOmissible  "- -">
<!ENTITY % bothOmissible "- -">
<!ENTITY % tableRows     "thead?, tfoot?, (tbody+ | tr+)">
]]>
<!ENTITY % endOmissible  "- O">
<!ENTITY % bothOmissible "O O">

<!-- XHTML lets rows stand in a table without a tbody. In HTML the tags of tbody may be left
     out, and so tr is offered in table by way of it. -->
<!ENTITY % tableRows     "thead?, tfoot?, tbody+">

<!-- EMPTY elements are "- O" in XHTML too: the slash in the tag is their end. -->


<!-- ===== What may stand where ==================================================== -->

<![%HTML.transitional;[
<!ENTITY % fontstyle "tt | i | b | u | s | strike | big | small">
<!ENTITY % special
  "a | img | applet | object | font | basefont | br | script | map | q | sub | sup | span |
   bdo | iframe">
<!ENTITY % list "ul | ol | dir | menu">
<!ENTITY % block
  "p | %heading; | %list; | pre | dl | div | center | noscript | noframes | blockquote |
   form | isindex | hr | table | fieldset | address | %edit;">
<!ENTITY % bodyContent    "%flow;">
<!ENTITY % addressContent "%inline; | p">
<!ENTITY % headContent    "title | isindex | base">
<!ENTITY % preExclusion   "img | object | applet | big | small | sub | sup | font | basefont">
<!ENTITY % buttonExclusion "a | %formctrl; | form | isindex | fieldset | iframe">
]]>
<!ENTITY % fontstyle "tt | i | b | big | small">
<!ENTITY % special
  "a | img | object | br | script | map | q | sub | sup | span | bdo">
<!ENTITY % list "ul | ol">
<!ENTITY % block
  "p | %heading; | %list; | pre | dl | div | noscript | blockquote | form | hr | table |
   fieldset | address | %edit;">
<!ENTITY % bodyContent    "%block; | script">
<!ENTITY % addressContent "%inline;">
<!ENTITY % headContent    "title | base">
<!ENTITY % preExclusion   "img | object | big | small | sub | sup">
<!ENTITY % buttonExclusion "a | %formctrl; | form | fieldset">

<!-- 4.01 includes ins and del at any depth of the body. Inclusions reach no deeper than
     the element itself here, so they stand among the blocks and in the text, as in
     XHTML. -->
<!ENTITY % edit     "ins | del">
<!ENTITY % heading  "h1 | h2 | h3 | h4 | h5 | h6">
<!ENTITY % phrase
  "em | strong | dfn | code | samp | kbd | var | cite | abbr | acronym">
<!ENTITY % formctrl "input | select | textarea | label | button">
<!ENTITY % inline   "#PCDATA | %fontstyle; | %phrase; | %special; | %formctrl; | %edit;">
<!ENTITY % flow     "%block; | %inline;">
<!ENTITY % headMisc "script | style | meta | link | object">


<!-- ===== The page ================================================================ -->

<![%HTML.frameset;[
<!ENTITY % htmlContent     "head, frameset">
<!ENTITY % noframesContent "body">
]]>
<!ENTITY % htmlContent     "head, body">
<!ENTITY % noframesContent "%flow;">

<!ELEMENT html %bothOmissible; (%htmlContent;)>

<!ELEMENT head %bothOmissible; (%headContent; | %headMisc;)*>
<!ATTLIST head
  profile CDATA #IMPLIED>

<!ELEMENT title - - (#PCDATA)>

<!ELEMENT base - O EMPTY>

<!ELEMENT link - O EMPTY>
<!ATTLIST link
  charset  CDATA #IMPLIED
  href     CDATA #IMPLIED
  hreflang (%Language;) #IMPLIED
  media    (%MediaDesc;) #IMPLIED
  rel      (%LinkType4;) #IMPLIED
  rev      (%LinkType4;) #IMPLIED
  type     CDATA #IMPLIED>

<!ELEMENT meta - O EMPTY>
<!ATTLIST meta
  content    CDATA #REQUIRED
  http-equiv (content-type | content-language | content-script-type | content-style-type |
              default-style | expires | pragma | refresh | set-cookie) #IMPLIED
  name       (author | copyright | date | description | generator | keywords | robots) #IMPLIED
  scheme     CDATA #IMPLIED>

<!ELEMENT style - - CDATA>
<!ATTLIST style
  type  CDATA #REQUIRED
  media (%MediaDesc;) #IMPLIED
  title CDATA #IMPLIED>

<!ELEMENT script - - CDATA>
<!ATTLIST script
  type    CDATA #REQUIRED
  charset CDATA #IMPLIED
  defer   (defer) #IMPLIED
  src     CDATA #IMPLIED>

<!ELEMENT noscript - - (%bodyContent;)*>

<!ELEMENT body %bothOmissible; (%bodyContent;)*>
<!ATTLIST body
  onload   CDATA #IMPLIED
  onunload CDATA #IMPLIED>


<!-- ===== Blocks ================================================================== -->

<!ELEMENT div - - (%flow;)*>
<!ELEMENT p %endOmissible; (%inline;)*>
<!ELEMENT (%heading;) - - (%inline;)*>
<!ELEMENT address - - (%addressContent;)*>
<!ELEMENT pre - - (%inline;)* -(%preExclusion;)>
<!ELEMENT hr - O EMPTY>

<!ELEMENT blockquote - - (%bodyContent;)*>
<!ATTLIST (blockquote | q)
  cite CDATA #IMPLIED>

<!ELEMENT (ins | del) - - (%flow;)*>
<!ATTLIST (ins | del)
  cite     CDATA #IMPLIED
  datetime CDATA #IMPLIED>

<!ELEMENT (ul | ol) - - (li)*>
<!ELEMENT li %endOmissible; (%flow;)*>
<!ELEMENT dl - - (dt | dd)*>
<!ELEMENT dt %endOmissible; (%inline;)*>
<!ELEMENT dd %endOmissible; (%flow;)*>


<!-- ===== Text ==================================================================== -->

<!ELEMENT (%fontstyle; | %phrase;) - - (%inline;)*>
<!ELEMENT (q | sub | sup | span | bdo) - - (%inline;)*>
<!ELEMENT br - O EMPTY>

<!ELEMENT a - - (%inline;)* -(a)>
<!ATTLIST a
  charset  CDATA #IMPLIED
  coords   CDATA #IMPLIED
  href     CDATA #IMPLIED
  hreflang (%Language;) #IMPLIED
  name     CDATA #IMPLIED
  rel      (%LinkType4;) #IMPLIED
  rev      (%LinkType4;) #IMPLIED
  shape    (%Shape;) #IMPLIED
  type     CDATA #IMPLIED>


<!-- ===== Images and objects ====================================================== -->

<!ELEMENT img - O EMPTY>
<!ATTLIST img
  alt      CDATA #REQUIRED
  src      CDATA #REQUIRED
  height   CDATA #IMPLIED
  ismap    (ismap) #IMPLIED
  longdesc CDATA #IMPLIED
  usemap   CDATA #IMPLIED
  width    CDATA #IMPLIED>

<!ELEMENT object - - (param | %flow;)*>
<!ATTLIST object
  archive  CDATA #IMPLIED
  classid  CDATA #IMPLIED
  codebase CDATA #IMPLIED
  codetype CDATA #IMPLIED
  data     CDATA #IMPLIED
  declare  (declare) #IMPLIED
  height   CDATA #IMPLIED
  name     CDATA #IMPLIED
  standby  CDATA #IMPLIED
  tabindex NUMBER #IMPLIED
  type     CDATA #IMPLIED
  usemap   CDATA #IMPLIED
  width    CDATA #IMPLIED>

<!ELEMENT param - O EMPTY>
<!ATTLIST param
  name      CDATA #REQUIRED
  id        ID #IMPLIED
  type      CDATA #IMPLIED
  value     CDATA #IMPLIED
  valuetype (data | ref | object) #IMPLIED>

<!ELEMENT map - - (%block; | script | area)*>

<!ELEMENT area - O EMPTY>
<!ATTLIST area
  alt    CDATA #REQUIRED
  coords CDATA #IMPLIED
  href   CDATA #IMPLIED
  nohref (nohref) #IMPLIED
  shape  (%Shape;) #IMPLIED>


<!-- ===== Forms =================================================================== -->

<!ELEMENT form - - (%bodyContent;)* -(form)>
<!ATTLIST form
  action         CDATA #REQUIRED
  accept         CDATA #IMPLIED
  accept-charset CDATA #IMPLIED
  enctype        CDATA #IMPLIED
  method         (get | post) #IMPLIED
  onreset        CDATA #IMPLIED
  onsubmit       CDATA #IMPLIED>

<!ELEMENT label - - (%inline;)* -(label)>
<!ATTLIST label
  for IDREF #IMPLIED>

<!ELEMENT input - O EMPTY>
<!ATTLIST input
  accept    CDATA #IMPLIED
  alt       CDATA #IMPLIED
  checked   (checked) #IMPLIED
  ismap     (ismap) #IMPLIED
  maxlength NUMBER #IMPLIED
  readonly  (readonly) #IMPLIED
  size      CDATA #IMPLIED
  src       CDATA #IMPLIED
  type      (text | password | checkbox | radio | submit | reset | file | hidden | image |
             button) #IMPLIED
  usemap    CDATA #IMPLIED>

<!ELEMENT select - - (optgroup | option)*>
<!ATTLIST select
  multiple (multiple) #IMPLIED
  size     NUMBER #IMPLIED>

<!ELEMENT optgroup - - (option)*>
<!ATTLIST optgroup
  label CDATA #REQUIRED>

<!ELEMENT option %endOmissible; (#PCDATA)>
<!ATTLIST option
  label    CDATA #IMPLIED
  selected (selected) #IMPLIED>

<!ELEMENT textarea - - (#PCDATA)>
<!ATTLIST textarea
  cols     NUMBER #REQUIRED
  rows     NUMBER #REQUIRED
  readonly (readonly) #IMPLIED>

<!ELEMENT button - - (%flow;)* -(%buttonExclusion;)>
<!ATTLIST button
  type (button | submit | reset) #IMPLIED>

<!ELEMENT fieldset - - (#PCDATA | legend | %flow;)*>
<!ELEMENT legend - - (%inline;)*>

<!-- What the controls share. -->
<!ATTLIST (input | select | textarea | button)
  name CDATA #IMPLIED>
<!ATTLIST (input | option | button)
  value CDATA #IMPLIED>
<!ATTLIST (input | select | optgroup | option | textarea | button)
  disabled (disabled) #IMPLIED>
<!ATTLIST (input | select | textarea)
  onchange CDATA #IMPLIED>
<!ATTLIST (input | textarea)
  onselect CDATA #IMPLIED>
<!ATTLIST (a | area | button | input | select | textarea)
  tabindex NUMBER #IMPLIED>
<!ATTLIST (a | area | button | input | label | legend | textarea)
  accesskey CDATA #IMPLIED>
<!ATTLIST (a | area | button | input | label | select | textarea)
  onblur  CDATA #IMPLIED
  onfocus CDATA #IMPLIED>


<!-- ===== Tables ================================================================== -->

<!ELEMENT table - - (caption?, (col* | colgroup*), %tableRows;)>
<!ATTLIST table
  border      CDATA #IMPLIED
  cellpadding CDATA #IMPLIED
  cellspacing CDATA #IMPLIED
  frame       (%TableFrame;) #IMPLIED
  rules       (%TableRules;) #IMPLIED
  summary     CDATA #IMPLIED
  width       CDATA #IMPLIED>

<!ELEMENT caption - - (%inline;)*>
<!ELEMENT (thead | tfoot) %endOmissible; (tr)*>
<!ELEMENT tbody %bothOmissible; (tr)*>
<!ELEMENT colgroup %endOmissible; (col)*>
<!ELEMENT col - O EMPTY>
<!ATTLIST (col | colgroup)
  span  NUMBER #IMPLIED
  width CDATA #IMPLIED>

<!ELEMENT tr %endOmissible; (th | td)*>
<!ELEMENT (th | td) %endOmissible; (%flow;)*>
<!ATTLIST (th | td)
  abbr    CDATA #IMPLIED
  axis    CDATA #IMPLIED
  colspan NUMBER #IMPLIED
  headers IDREFS #IMPLIED
  rowspan NUMBER #IMPLIED
  scope   (row | col | rowgroup | colgroup) #IMPLIED>
<!ATTLIST (col | colgroup | thead | tfoot | tbody | tr | th | td)
  align   (%CellHAlign;) #IMPLIED
  char    CDATA #IMPLIED
  charoff CDATA #IMPLIED
  valign  (%CellVAlign;) #IMPLIED>


<!-- ===== Attributes of many elements ============================================= -->

<!ENTITY % attrsElements
  "body | div | p | %heading; | address | pre | hr | blockquote | ins | del | %list; | li |
   dl | dt | dd | %fontstyle; | %phrase; | q | sub | sup | span | a | img | object | map |
   area | form | %formctrl; | optgroup | option | fieldset | legend | table | caption |
   thead | tfoot | tbody | colgroup | col | tr | th | td | noscript | link">

<!ATTLIST (%attrsElements;)
  onclick     CDATA #IMPLIED
  ondblclick  CDATA #IMPLIED
  onkeydown   CDATA #IMPLIED
  onkeypress  CDATA #IMPLIED
  onkeyup     CDATA #IMPLIED
  onmousedown CDATA #IMPLIED
  onmousemove CDATA #IMPLIED
  onmouseout  CDATA #IMPLIED
  onmouseover CDATA #IMPLIED
  onmouseup   CDATA #IMPLIED>

<!-- map is given its id below, where HTML and XHTML differ. -->
<!ATTLIST (%attrsElements; | bdo | br)
  class CDATA #IMPLIED
  style CDATA #IMPLIED
  title CDATA #IMPLIED>

<!-- bdo must say its direction; of two declarations of an attribute the first one stands. -->
<!ATTLIST bdo
  dir (ltr | rtl) #REQUIRED>
<!ATTLIST (%attrsElements; | bdo | html | head | title | meta | style)
  dir  (ltr | rtl) #IMPLIED
  lang (%Language;) #IMPLIED>


<!-- ===== Where HTML and XHTML part =============================================== -->

<![%HTML.sgml;[
<!ATTLIST img
  name CDATA #IMPLIED>
<!ATTLIST map
  name CDATA #REQUIRED>
<!ATTLIST script
  event CDATA #IMPLIED
  for   CDATA #IMPLIED>
]]>
<![%HTML.xml;[
<!ATTLIST html
  xmlns CDATA #FIXED "http://www.w3.org/1999/xhtml">
<!ATTLIST map
  id   ID #REQUIRED
  name CDATA #IMPLIED>
<!ATTLIST (base | head | html | meta | script | style | title)
  id ID #IMPLIED>
<!ATTLIST (%attrsElements; | bdo | html | head | title | meta | style)
  xml:lang (%Language;) #IMPLIED>
<!ATTLIST (script | style | pre)
  xml:space CDATA #FIXED "preserve">
]]>
<!ATTLIST (%attrsElements; | bdo | br)
  id ID #IMPLIED>


<!-- ===== What Transitional adds ================================================== -->

<![%HTML.transitional;[

<!ELEMENT center - - (%flow;)*>
<!ELEMENT (dir | menu) - - (li)*>
<!ELEMENT noframes - - (%noframesContent;)*>
<!ATTLIST (center | noframes)
  class       CDATA #IMPLIED
  dir         (ltr | rtl) #IMPLIED
  id          ID #IMPLIED
  lang        (%Language;) #IMPLIED
  style       CDATA #IMPLIED
  title       CDATA #IMPLIED
  onclick     CDATA #IMPLIED
  ondblclick  CDATA #IMPLIED
  onkeydown   CDATA #IMPLIED
  onkeypress  CDATA #IMPLIED
  onkeyup     CDATA #IMPLIED
  onmousedown CDATA #IMPLIED
  onmousemove CDATA #IMPLIED
  onmouseout  CDATA #IMPLIED
  onmouseover CDATA #IMPLIED
  onmouseup   CDATA #IMPLIED>

<!ELEMENT font - - (%inline;)*>
<!ATTLIST font
  color CDATA #IMPLIED
  face  CDATA #IMPLIED
  size  (1 | 2 | 3 | 4 | 5 | 6 | 7) #IMPLIED>

<!ELEMENT basefont - O EMPTY>
<!ATTLIST basefont
  size  (1 | 2 | 3 | 4 | 5 | 6 | 7) #REQUIRED
  color CDATA #IMPLIED
  face  CDATA #IMPLIED
  id    ID #IMPLIED>

<!ELEMENT isindex - O EMPTY>
<!ATTLIST isindex
  prompt CDATA #IMPLIED>

<!ELEMENT applet - - (param | %flow;)*>
<!ATTLIST applet
  height   CDATA #REQUIRED
  width    CDATA #REQUIRED
  alt      CDATA #IMPLIED
  archive  CDATA #IMPLIED
  code     CDATA #IMPLIED
  codebase CDATA #IMPLIED
  name     CDATA #IMPLIED
  object   CDATA #IMPLIED>

<!ELEMENT iframe - - (%flow;)*>
<!ATTLIST iframe
  frameborder  (1 | 0) #IMPLIED
  height       CDATA #IMPLIED
  longdesc     CDATA #IMPLIED
  marginheight CDATA #IMPLIED
  marginwidth  CDATA #IMPLIED
  name         CDATA #IMPLIED
  scrolling    (yes | no | auto) #IMPLIED
  src          CDATA #IMPLIED
  width        CDATA #IMPLIED>

<!ATTLIST (font | isindex | applet | iframe)
  class CDATA #IMPLIED
  id    ID #IMPLIED
  style CDATA #IMPLIED
  title CDATA #IMPLIED>
<!ATTLIST (font | isindex)
  dir  (ltr | rtl) #IMPLIED
  lang (%Language;) #IMPLIED>

<!-- Attributes of the elements above, for looks and for frames. -->
<!ATTLIST body
  alink      CDATA #IMPLIED
  background CDATA #IMPLIED
  bgcolor    CDATA #IMPLIED
  link       CDATA #IMPLIED
  text       CDATA #IMPLIED
  vlink      CDATA #IMPLIED>
<!ATTLIST (a | area | base | form | link)
  target (%Target;) #IMPLIED>
<!ATTLIST (div | %heading; | p)
  align (%BlockAlign;) #IMPLIED>
<!ATTLIST (caption | legend)
  align (top | bottom | left | right) #IMPLIED>
<!ATTLIST (hr | table)
  align (left | center | right) #IMPLIED>
<!ATTLIST (applet | iframe | img | input | object)
  align (%FloatAlign;) #IMPLIED>
<!ATTLIST (applet | img | object)
  hspace CDATA #IMPLIED
  vspace CDATA #IMPLIED>
<!ATTLIST (img | object)
  border CDATA #IMPLIED>
<!ATTLIST br
  clear (left | all | right | none) #IMPLIED>
<!ATTLIST hr
  noshade (noshade) #IMPLIED
  size    CDATA #IMPLIED
  width   CDATA #IMPLIED>
<!ATTLIST pre
  width NUMBER #IMPLIED>
<!ATTLIST (dl | %list;)
  compact (compact) #IMPLIED>
<!ATTLIST ol
  start NUMBER #IMPLIED
  type  (1 | a | i) #IMPLIED>
<!ATTLIST ul
  type (disc | square | circle) #IMPLIED>
<!ATTLIST li
  type  (disc | square | circle | 1 | a | i) #IMPLIED
  value NUMBER #IMPLIED>
<!ATTLIST (table | tr | th | td)
  bgcolor CDATA #IMPLIED>
<!ATTLIST (th | td)
  height CDATA #IMPLIED
  nowrap (nowrap) #IMPLIED
  width  CDATA #IMPLIED>
<!ATTLIST script
  language CDATA #IMPLIED>

<!--ATTRIBUTEEDITORS
applet.archive=uri
applet.codebase=uri
basefont.color=color
body.alink=color
body.background=uri
body.bgcolor=color
body.link=color
body.text=color
body.vlink=color
font.color=color
iframe.longdesc=uri
iframe.src=uri
table.bgcolor=color
-->

]]>


<!-- ===== What Frameset adds ====================================================== -->

<![%HTML.frameset;[

<!ELEMENT frameset - - (frameset | frame | noframes)*>
<!ATTLIST frameset
  cols     CDATA #IMPLIED
  rows     CDATA #IMPLIED
  onload   CDATA #IMPLIED
  onunload CDATA #IMPLIED>

<!ELEMENT frame - O EMPTY>
<!ATTLIST frame
  frameborder  (1 | 0) #IMPLIED
  longdesc     CDATA #IMPLIED
  marginheight CDATA #IMPLIED
  marginwidth  CDATA #IMPLIED
  name         CDATA #IMPLIED
  noresize     (noresize) #IMPLIED
  scrolling    (yes | no | auto) #IMPLIED
  src          CDATA #IMPLIED>

<!ATTLIST (frameset | frame)
  class CDATA #IMPLIED
  id    ID #IMPLIED
  style CDATA #IMPLIED
  title CDATA #IMPLIED>

<!--ATTRIBUTEEDITORS
frame.longdesc=uri
frame.src=uri
-->

]]>


<!-- ===== Editors =================================================================
  An attribute that was declared for several elements is one and the same for all of
  them, so one entry serves. -->

<!--ATTRIBUTEEDITORS
a.href=uri
area.href=uri
blockquote.cite=uri
form.action=uri
head.profile=uri
img.longdesc=uri
img.src=uri
img.usemap=uri
input.src=uri
input.usemap=uri
ins.cite=uri
link.href=uri
object.archive=uri
object.classid=uri
object.codebase=uri
object.data=uri
object.usemap=uri
script.src=uri
-->

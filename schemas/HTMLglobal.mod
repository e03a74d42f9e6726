<!--
  HTMLglobal.mod: the attributes that every element of HTML takes.

  Part of loose.dtd. Each group is one ATTLIST over a list of names and not an entity
  that the elements repeat: so it is read once, and it need not fit the 16 KB to which
  a parameter entity may expand.

  A new element goes into one of the two lists below, or it has no attributes but its
  own. data- attributes are left to the writer.
-->

<!-- Nothing of these is ever shown. The standard forbids no global attribute anywhere; but
     here they are given no role, no aria-..., only the events that can happen to them,
     and none of what needs a thing to be seen (accesskey, hidden, tabindex ...), so that
     the list for meta or script is one of things to choose from. -->
<!ENTITY % hiddenElements
  "base | head | link | meta | noscript | param | script | source | style | template |
   title | track">

<!ENTITY % shownElements
  "html | body |
   article | aside | nav | section | header | footer | main | search | address |
   h1 | h2 | h3 | h4 | h5 | h6 | hgroup |
   p | hr | pre | blockquote | div | figure | figcaption |
   ul | ol | menu | li | dl | dt | dd |
   a | em | strong | small | s | cite | q | dfn | abbr | data | time | code | var | samp |
   kbd | sub | sup | i | b | u | mark | bdi | bdo | span | br | wbr | ins | del |
   ruby | rt | rp | rb | rtc |
   picture | img | iframe | embed | object | video | audio | map | area | canvas |
   table | caption | colgroup | col | thead | tbody | tfoot | tr | td | th |
   form | label | input | button | selectedcontent | select | datalist | optgroup | option |
   textarea | output | progress | meter | fieldset | legend |
   details | summary | dialog | slot |
   acronym | applet | basefont | big | center | dir | font | isindex | listing | marquee |
   nobr | noembed | noframes | plaintext | strike | tt | xmp">


<!-- ===== Global attributes ======================================================= -->

<!ATTLIST (%shownElements; | %hiddenElements;)
  class     CDATA #IMPLIED
  dir       (ltr | rtl | auto) #IMPLIED
  id        ID #IMPLIED
  lang      (%Language;) #IMPLIED
  nonce     CDATA #IMPLIED
  style     CDATA #IMPLIED
  title     CDATA #IMPLIED
  translate (yes | no) #IMPLIED

  -- Microdata. --
  itemid    %URI; #IMPLIED
  itemprop  CDATA #IMPLIED
  itemref   IDREFS #IMPLIED
  itemscope (itemscope) #IMPLIED
  itemtype  %URI; #IMPLIED>

<!ATTLIST (%shownElements;)
  accesskey          CDATA #IMPLIED
  autocapitalize     (off | none | on | sentences | words | characters) #IMPLIED
  autocorrect        (on | off) #IMPLIED
  autofocus          (autofocus) #IMPLIED
  contenteditable    (true | plaintext-only | false) #IMPLIED
  draggable          (true | false) #IMPLIED
  enterkeyhint       (enter | done | go | next | previous | search | send) #IMPLIED
  exportparts        CDATA #IMPLIED
  headingoffset      NUMBER #IMPLIED
  headingreset       (headingreset) #IMPLIED
  hidden             (until-found | hidden) #IMPLIED
  inert              (inert) #IMPLIED
  inputmode          (none | text | tel | url | email | numeric | decimal | search) #IMPLIED
  is                 CDATA #IMPLIED
  part               CDATA #IMPLIED
  popover            (auto | manual | hint) #IMPLIED
  slot               CDATA #IMPLIED
  spellcheck         (true | false) #IMPLIED
  tabindex           NUMBER #IMPLIED
  writingsuggestions (true | false) #IMPLIED>


<!-- ===== ARIA ====================================================================
  The roles of WAI-ARIA 1.2; those for books (doc-...) and graphics are rarely typed
  and left to the writer. Which role and property suits which element is not told
  apart here. -->

<!ATTLIST (%shownElements;)
  role                        (alert | alertdialog | application | article | banner |
                               blockquote | button | caption | cell | checkbox | code |
                               columnheader | combobox | complementary | contentinfo |
                               definition | deletion | dialog | document | emphasis | feed |
                               figure | form | grid | gridcell | group | heading | img |
                               insertion | link | list | listbox | listitem | log | main |
                               marquee | math | menu | menubar | menuitem | menuitemcheckbox |
                               menuitemradio | meter | navigation | none | note | option |
                               paragraph | presentation | progressbar | radio | radiogroup |
                               region | row | rowgroup | rowheader | scrollbar | search |
                               searchbox | separator | slider | spinbutton | status | strong |
                               subscript | superscript | switch | tab | table | tablist |
                               tabpanel | term | textbox | time | timer | toolbar | tooltip |
                               tree | treegrid | treeitem) #IMPLIED
  aria-activedescendant       IDREF #IMPLIED
  aria-atomic                 (true | false) #IMPLIED
  aria-autocomplete           (inline | list | both | none) #IMPLIED
  aria-braillelabel           CDATA #IMPLIED
  aria-brailleroledescription CDATA #IMPLIED
  aria-busy                   (true | false) #IMPLIED
  aria-checked                (true | false | mixed | undefined) #IMPLIED
  aria-colcount               NUMBER #IMPLIED
  aria-colindex               NUMBER #IMPLIED
  aria-colspan                NUMBER #IMPLIED
  aria-controls               IDREFS #IMPLIED
  aria-current                (page | step | location | date | time | true | false) #IMPLIED
  aria-describedby            IDREFS #IMPLIED
  aria-description            CDATA #IMPLIED
  aria-details                IDREFS #IMPLIED
  aria-disabled               (true | false) #IMPLIED
  aria-errormessage           IDREFS #IMPLIED
  aria-expanded               (true | false | undefined) #IMPLIED
  aria-flowto                 IDREFS #IMPLIED
  aria-haspopup               (true | false | menu | listbox | tree | grid | dialog) #IMPLIED
  aria-hidden                 (true | false) #IMPLIED
  aria-invalid                (true | false | grammar | spelling) #IMPLIED
  aria-keyshortcuts           CDATA #IMPLIED
  aria-label                  CDATA #IMPLIED
  aria-labelledby             IDREFS #IMPLIED
  aria-level                  NUMBER #IMPLIED
  aria-live                   (off | polite | assertive) #IMPLIED
  aria-modal                  (true | false) #IMPLIED
  aria-multiline              (true | false) #IMPLIED
  aria-multiselectable        (true | false) #IMPLIED
  aria-orientation            (vertical | horizontal | undefined) #IMPLIED
  aria-owns                   IDREFS #IMPLIED
  aria-placeholder            CDATA #IMPLIED
  aria-posinset               NUMBER #IMPLIED
  aria-pressed                (true | false | mixed | undefined) #IMPLIED
  aria-readonly               (true | false) #IMPLIED
  aria-relevant               (all | additions | removals | text) #IMPLIED
  aria-required               (true | false) #IMPLIED
  aria-roledescription        CDATA #IMPLIED
  aria-rowcount               NUMBER #IMPLIED
  aria-rowindex               NUMBER #IMPLIED
  aria-rowspan                NUMBER #IMPLIED
  aria-selected               (true | false | undefined) #IMPLIED
  aria-setsize                NUMBER #IMPLIED
  aria-sort                   (ascending | descending | none | other) #IMPLIED
  aria-valuemax               CDATA #IMPLIED
  aria-valuemin               CDATA #IMPLIED
  aria-valuenow               CDATA #IMPLIED
  aria-valuetext              CDATA #IMPLIED>


<!-- ===== Events ================================================================== -->

<!ATTLIST (%shownElements;)
  -- The mouse, the pointer, touch, the wheel. --
  onauxclick                CDATA #IMPLIED
  onclick                   CDATA #IMPLIED
  oncontextmenu             CDATA #IMPLIED
  ondblclick                CDATA #IMPLIED
  ongotpointercapture       CDATA #IMPLIED
  onlostpointercapture      CDATA #IMPLIED
  onmousedown               CDATA #IMPLIED
  onmouseenter              CDATA #IMPLIED
  onmouseleave              CDATA #IMPLIED
  onmousemove               CDATA #IMPLIED
  onmouseout                CDATA #IMPLIED
  onmouseover               CDATA #IMPLIED
  onmouseup                 CDATA #IMPLIED
  onpointercancel           CDATA #IMPLIED
  onpointerdown             CDATA #IMPLIED
  onpointerenter            CDATA #IMPLIED
  onpointerleave            CDATA #IMPLIED
  onpointermove             CDATA #IMPLIED
  onpointerout              CDATA #IMPLIED
  onpointerover             CDATA #IMPLIED
  onpointerrawupdate        CDATA #IMPLIED
  onpointerup               CDATA #IMPLIED
  ontouchcancel             CDATA #IMPLIED
  ontouchend                CDATA #IMPLIED
  ontouchmove               CDATA #IMPLIED
  ontouchstart              CDATA #IMPLIED
  onwheel                   CDATA #IMPLIED

  -- The keyboard, focus and text. --
  onbeforeinput             CDATA #IMPLIED
  onblur                    CDATA #IMPLIED
  oncopy                    CDATA #IMPLIED
  oncut                     CDATA #IMPLIED
  onfocus                   CDATA #IMPLIED
  oninput                   CDATA #IMPLIED
  onkeydown                 CDATA #IMPLIED
  onkeypress                CDATA #IMPLIED
  onkeyup                   CDATA #IMPLIED
  onpaste                   CDATA #IMPLIED
  onselect                  CDATA #IMPLIED
  onselectionchange         CDATA #IMPLIED
  onselectstart             CDATA #IMPLIED

  -- Drag and drop. --
  ondrag                    CDATA #IMPLIED
  ondragend                 CDATA #IMPLIED
  ondragenter               CDATA #IMPLIED
  ondragleave               CDATA #IMPLIED
  ondragover                CDATA #IMPLIED
  ondragstart               CDATA #IMPLIED
  ondrop                    CDATA #IMPLIED

  -- Forms, dialogs and popovers. --
  onbeforematch             CDATA #IMPLIED
  onbeforetoggle            CDATA #IMPLIED
  oncancel                  CDATA #IMPLIED
  onchange                  CDATA #IMPLIED
  onclose                   CDATA #IMPLIED
  oncommand                 CDATA #IMPLIED
  onformdata                CDATA #IMPLIED
  oninvalid                 CDATA #IMPLIED
  onreset                   CDATA #IMPLIED
  onslotchange              CDATA #IMPLIED
  onsubmit                  CDATA #IMPLIED
  ontoggle                  CDATA #IMPLIED

  -- Loading, layout, animation. --
  onabort                   CDATA #IMPLIED
  onanimationcancel         CDATA #IMPLIED
  onanimationend            CDATA #IMPLIED
  onanimationiteration      CDATA #IMPLIED
  onanimationstart          CDATA #IMPLIED
  oncontextlost             CDATA #IMPLIED
  oncontextrestored         CDATA #IMPLIED
  onerror                   CDATA #IMPLIED
  onload                    CDATA #IMPLIED
  onresize                  CDATA #IMPLIED
  onscroll                  CDATA #IMPLIED
  onscrollend               CDATA #IMPLIED
  onsecuritypolicyviolation CDATA #IMPLIED
  ontransitioncancel        CDATA #IMPLIED
  ontransitionend           CDATA #IMPLIED
  ontransitionrun           CDATA #IMPLIED
  ontransitionstart         CDATA #IMPLIED

  -- Media. They do not bubble, but the standard gives them to every element. --
  oncanplay                 CDATA #IMPLIED
  oncanplaythrough          CDATA #IMPLIED
  oncuechange               CDATA #IMPLIED
  ondurationchange          CDATA #IMPLIED
  onemptied                 CDATA #IMPLIED
  onended                   CDATA #IMPLIED
  onloadeddata              CDATA #IMPLIED
  onloadedmetadata          CDATA #IMPLIED
  onloadstart               CDATA #IMPLIED
  onpause                   CDATA #IMPLIED
  onplay                    CDATA #IMPLIED
  onplaying                 CDATA #IMPLIED
  onprogress                CDATA #IMPLIED
  onratechange              CDATA #IMPLIED
  onseeked                  CDATA #IMPLIED
  onseeking                 CDATA #IMPLIED
  onstalled                 CDATA #IMPLIED
  onsuspend                 CDATA #IMPLIED
  ontimeupdate              CDATA #IMPLIED
  onvolumechange            CDATA #IMPLIED
  onwaiting                 CDATA #IMPLIED>

<!ATTLIST (link | script | source | style | track)
  onerror CDATA #IMPLIED
  onload  CDATA #IMPLIED>

<!-- All elements share the attributes of the lists above, so one entry serves them all. -->
<!--ATTRIBUTEEDITORS
a.itemid=uri
a.itemtype=uri
-->

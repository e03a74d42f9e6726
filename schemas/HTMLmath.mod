<!--
  HTMLmath.mod: MathML inside a page.

  Part of loose.dtd. MathML Core, which browsers draw, with menclose, ms, semantics and
  the attributes of MathML 3 that they still honour. Content MathML is left out: nobody
  types it into a page.
-->

<!-- ===== What may stand where ==================================================== -->

<!ENTITY % mathToken "mi | mn | mo | ms | mtext | mspace">
<!ENTITY % mathLayout
  "mrow | mfrac | msqrt | mroot | mstyle | merror | mpadded | mphantom | menclose | maction">
<!ENTITY % mathScript "msub | msup | msubsup | munder | mover | munderover | mmultiscripts">
<!ENTITY % mathExpression "%mathToken; | %mathLayout; | %mathScript; | mtable | semantics">

<!ELEMENT math - - (%mathExpression;)*>
<!ATTLIST math
  alttext CDATA #IMPLIED
  display (block | inline) #IMPLIED
  xmlns   CDATA #FIXED "http://www.w3.org/1998/Math/MathML">


<!-- ===== Tokens ================================================================== -->

<!-- Text in a formula may hold the phrases of HTML. -->
<!ELEMENT (mi | mn | mo | ms) - - (#PCDATA)>
<!ELEMENT mtext - - (#PCDATA | %phrasing;)*>
<!ELEMENT mspace - - (#PCDATA)>

<!ATTLIST mi
  mathvariant (normal | bold | italic | bold-italic | double-struck | fraktur | script |
               sans-serif | monospace) #IMPLIED>
<!ATTLIST mo
  fence         (true | false) #IMPLIED
  form          (prefix | infix | postfix) #IMPLIED
  largeop       (true | false) #IMPLIED
  lspace        %Length; #IMPLIED
  maxsize       %Length; #IMPLIED
  minsize       %Length; #IMPLIED
  movablelimits (true | false) #IMPLIED
  rspace        %Length; #IMPLIED
  separator     (true | false) #IMPLIED
  stretchy      (true | false) #IMPLIED
  symmetric     (true | false) #IMPLIED>
<!ATTLIST ms
  lquote CDATA #IMPLIED
  rquote CDATA #IMPLIED>
<!ATTLIST mspace
  depth  %Length; #IMPLIED
  height %Length; #IMPLIED
  width  %Length; #IMPLIED>


<!-- ===== Layout ================================================================== -->

<!ELEMENT (%mathLayout;) - - (%mathExpression;)*>
<!ATTLIST mfrac
  linethickness %Length; #IMPLIED>
<!ATTLIST mpadded
  depth   %Length; #IMPLIED
  height  %Length; #IMPLIED
  lspace  %Length; #IMPLIED
  voffset %Length; #IMPLIED
  width   %Length; #IMPLIED>
<!ATTLIST menclose
  notation (actuarial | bottom | box | circle | downdiagonalstrike | horizontalstrike | left |
            longdiv | madruwb | phasorangle | radical | right | roundedbox | top |
            updiagonalarrow | updiagonalstrike | verticalstrike) #IMPLIED>
<!ATTLIST maction
  actiontype (statusline | toggle | tooltip) #IMPLIED
  selection  NUMBER #IMPLIED>

<!-- Of munder and its like, mmultiscripts separates the scripts behind the base from those
     before it with mprescripts, and leaves a place empty with none. -->
<!ELEMENT (msub | msup | msubsup | munder | mover | munderover) - - (%mathExpression;)*>
<!ELEMENT mmultiscripts - - (%mathExpression; | mprescripts | none)*>
<!ELEMENT (mprescripts | none) - - (#PCDATA)>
<!ATTLIST (mover | munderover)
  accent (true | false) #IMPLIED>
<!ATTLIST (munder | munderover)
  accentunder (true | false) #IMPLIED>


<!-- ===== Tables ================================================================== -->

<!ELEMENT mtable - - (mtr)*>
<!ELEMENT mtr - - (mtd)*>
<!ELEMENT mtd - - (%mathExpression;)*>
<!ATTLIST mtable
  columnalign   (left | center | right) #IMPLIED
  columnlines   (none | solid | dashed) #IMPLIED
  columnspacing %Length; #IMPLIED
  frame         (none | solid | dashed) #IMPLIED
  rowalign      (top | bottom | center | baseline | axis) #IMPLIED
  rowlines      (none | solid | dashed) #IMPLIED
  rowspacing    %Length; #IMPLIED>
<!ATTLIST mtr
  columnalign (left | center | right) #IMPLIED
  rowalign    (top | bottom | center | baseline | axis) #IMPLIED>
<!ATTLIST mtd
  columnalign (left | center | right) #IMPLIED
  columnspan  NUMBER #IMPLIED
  rowalign    (top | bottom | center | baseline | axis) #IMPLIED
  rowspan     NUMBER #IMPLIED>


<!-- ===== Annotations ============================================================= -->

<!ELEMENT semantics - - (%mathExpression; | annotation | annotation-xml)*>
<!ELEMENT annotation - - (#PCDATA)>
<!-- With the encoding text/html or image/svg+xml. -->
<!ELEMENT annotation-xml - - (#PCDATA | %flow;)*>
<!ATTLIST (annotation | annotation-xml)
  encoding CDATA #IMPLIED
  src      %URI; #IMPLIED>


<!-- ===== Attributes of all ======================================================= -->

<!ATTLIST (math | %mathToken; | %mathLayout; | %mathScript; | mprescripts | none | mtable | mtr |
           mtd | semantics | annotation | annotation-xml)
  arg            CDATA #IMPLIED
  class          CDATA #IMPLIED
  dir            (ltr | rtl) #IMPLIED
  displaystyle   (true | false) #IMPLIED
  href           %URI; #IMPLIED
  id             ID #IMPLIED
  intent         CDATA #IMPLIED
  mathbackground %Color; #IMPLIED
  mathcolor      %Color; #IMPLIED
  mathsize       %Length; #IMPLIED
  scriptlevel    NUMBER #IMPLIED
  style          CDATA #IMPLIED
  tabindex       NUMBER #IMPLIED
  aria-hidden    (true | false) #IMPLIED
  aria-label     CDATA #IMPLIED
  onclick        CDATA #IMPLIED
  onmouseout     CDATA #IMPLIED
  onmouseover    CDATA #IMPLIED>

<!-- One entry serves all the elements of a list. -->
<!--ATTRIBUTEEDITORS
annotation.src=uri
math.href=uri
math.mathbackground=color
math.mathcolor=color
-->

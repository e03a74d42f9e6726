<!--
  HTMLsvg.mod: SVG 2 inside a page, as far as people type it by hand.

  Part of loose.dtd; names keep their case here (viewBox, linearGradient).

  a, script, style and title belong to both languages and can be declared once: they
  stand in loose.dtd and hold what HTML gives them. So in an svg, an a offers the
  elements of HTML, and shapes in it are left to the writer.

  Presentation attributes go to the elements on which they do something, and not to
  all, as the standard has it: the lists stay short enough to read. The same holds for
  events and aria-... . Elements for fonts and animated colours are gone from browsers
  and from here.
-->

<!-- ===== Values ================================================================== -->

<!ENTITY % AspectRatio
  "none | xMinYMin | xMidYMin | xMaxYMin | xMinYMid | xMidYMid | xMaxYMid | xMinYMax |
   xMidYMax | xMaxYMax | meet | slice">
<!ENTITY % FilterInput "SourceGraphic | SourceAlpha | BackgroundImage | BackgroundAlpha |
                        FillPaint | StrokePaint">
<!ENTITY % Units "userSpaceOnUse | objectBoundingBox">


<!-- ===== What may stand where ==================================================== -->

<!ENTITY % svgDescriptive  "desc | metadata | title">
<!ENTITY % svgAnimation    "animate | animateMotion | animateTransform | set">
<!ENTITY % svgShape        "circle | ellipse | line | path | polygon | polyline | rect">
<!ENTITY % svgPaintServer  "linearGradient | pattern | radialGradient">
<!ENTITY % svgContainer
  "a | g | defs | svg | symbol | use | image | text | switch | foreignObject | view |
   clipPath | filter | marker | mask | script | style | %svgShape; | %svgPaintServer; |
   %svgDescriptive; | %svgAnimation;">
<!ENTITY % svgShapeContent
  "%svgDescriptive; | %svgAnimation; | %svgPaintServer; | clipPath | marker | mask | script |
   style">
<!ENTITY % svgFilterPrimitive
  "feBlend | feColorMatrix | feComponentTransfer | feComposite | feConvolveMatrix |
   feDiffuseLighting | feDisplacementMap | feDropShadow | feFlood | feGaussianBlur |
   feImage | feMerge | feMorphology | feOffset | feSpecularLighting | feTile |
   feTurbulence">
<!ENTITY % svgFilterLeaf "%svgDescriptive; | animate | set | script">


<!-- ===== Structure =============================================================== -->

<!ELEMENT (svg | g | defs | symbol | marker | mask | pattern) - - (%svgContainer;)*>
<!ATTLIST svg
  baseProfile (none | full | basic | tiny) #IMPLIED
  version     (1.0 | 1.1 | 1.2) #IMPLIED
  xmlns       CDATA #FIXED "http://www.w3.org/2000/svg"
  xmlns:xlink CDATA #FIXED "http://www.w3.org/1999/xlink"
  zoomAndPan  (disable | magnify) #IMPLIED>
<!ATTLIST symbol
  refX (left | center | right) #IMPLIED
  refY (top | center | bottom) #IMPLIED>
<!ATTLIST marker
  markerHeight CDATA #IMPLIED
  markerUnits  (strokeWidth | userSpaceOnUse) #IMPLIED
  markerWidth  CDATA #IMPLIED
  orient       (auto | auto-start-reverse) #IMPLIED
  refX         (left | center | right) #IMPLIED
  refY         (top | center | bottom) #IMPLIED>
<!ATTLIST mask
  maskContentUnits (%Units;) #IMPLIED
  maskUnits        (%Units;) #IMPLIED>
<!ATTLIST pattern
  patternContentUnits (%Units;) #IMPLIED
  patternTransform    CDATA #IMPLIED
  patternUnits        (%Units;) #IMPLIED>

<!ELEMENT use - - (%svgDescriptive; | %svgAnimation; | clipPath | mask | script | style)*>

<!ELEMENT switch - - (%svgShape; | %svgDescriptive; | %svgAnimation; | a | foreignObject | g |
                      image | script | style | svg | switch | text | use)*>

<!ELEMENT view - - (%svgDescriptive; | %svgAnimation; | script | style)*>
<!ATTLIST view
  zoomAndPan (disable | magnify) #IMPLIED>

<!-- HTML inside a drawing. -->
<!ELEMENT foreignObject - - (#PCDATA | %flow;)*>

<!ELEMENT (desc | metadata) - - (#PCDATA)>


<!-- ===== Shapes, images, text ==================================================== -->

<!ELEMENT (%svgShape;) - - (%svgShapeContent;)*>
<!ATTLIST (%svgShape;)
  pathLength CDATA #IMPLIED>
<!ATTLIST circle
  cx CDATA #IMPLIED
  cy CDATA #IMPLIED
  r  CDATA #IMPLIED>
<!ATTLIST ellipse
  cx CDATA #IMPLIED
  cy CDATA #IMPLIED
  rx CDATA #IMPLIED
  ry CDATA #IMPLIED>
<!ATTLIST line
  x1 CDATA #IMPLIED
  y1 CDATA #IMPLIED
  x2 CDATA #IMPLIED
  y2 CDATA #IMPLIED>
<!ATTLIST path
  d CDATA #IMPLIED>
<!ATTLIST polygon
  points CDATA #IMPLIED>
<!ATTLIST polyline
  points CDATA #IMPLIED>
<!ATTLIST rect
  x      CDATA #IMPLIED
  y      CDATA #IMPLIED
  width  CDATA #IMPLIED
  height CDATA #IMPLIED
  rx     CDATA #IMPLIED
  ry     CDATA #IMPLIED>

<!ELEMENT image - - (%svgDescriptive; | %svgAnimation; | clipPath | mask | script | style)*>
<!ATTLIST image
  crossorigin         (%CORS;) #IMPLIED
  decoding            (sync | async | auto) #IMPLIED
  fetchpriority       (high | low | auto) #IMPLIED
  preserveAspectRatio (%AspectRatio;) #IMPLIED>

<!ELEMENT text - - (#PCDATA | tspan | textPath | a | %svgShapeContent;)*>
<!ELEMENT tspan - - (#PCDATA | tspan | a | %svgDescriptive; | %svgPaintServer; | animate | set |
                     script | style)*>
<!ELEMENT textPath - - (#PCDATA | tspan | a | %svgDescriptive; | %svgPaintServer; | animate |
                        clipPath | marker | mask | set | script | style)*>
<!ATTLIST (text | tspan)
  x            CDATA #IMPLIED
  y            CDATA #IMPLIED
  dx           CDATA #IMPLIED
  dy           CDATA #IMPLIED
  rotate       CDATA #IMPLIED
  textLength   CDATA #IMPLIED
  lengthAdjust (spacing | spacingAndGlyphs) #IMPLIED>
<!ATTLIST textPath
  lengthAdjust (spacing | spacingAndGlyphs) #IMPLIED
  method       (align | stretch) #IMPLIED
  path         CDATA #IMPLIED
  side         (left | right) #IMPLIED
  spacing      (auto | exact) #IMPLIED
  startOffset  CDATA #IMPLIED
  textLength   CDATA #IMPLIED>


<!-- ===== Gradients, clipping ===================================================== -->

<!ELEMENT (linearGradient | radialGradient)
          - - (stop | %svgDescriptive; | animate | animateTransform | set | script | style)*>
<!ATTLIST linearGradient
  gradientTransform CDATA #IMPLIED
  gradientUnits     (%Units;) #IMPLIED
  spreadMethod      (pad | reflect | repeat) #IMPLIED
  x1                CDATA #IMPLIED
  x2                CDATA #IMPLIED
  y1                CDATA #IMPLIED
  y2                CDATA #IMPLIED>
<!ATTLIST radialGradient
  cx                CDATA #IMPLIED
  cy                CDATA #IMPLIED
  fr                CDATA #IMPLIED
  fx                CDATA #IMPLIED
  fy                CDATA #IMPLIED
  gradientTransform CDATA #IMPLIED
  gradientUnits     (%Units;) #IMPLIED
  r                 CDATA #IMPLIED
  spreadMethod      (pad | reflect | repeat) #IMPLIED>

<!ELEMENT stop - - (animate | set | script | style)*>
<!ATTLIST stop
  offset       CDATA   #IMPLIED
  stop-color   %Color; #IMPLIED
  stop-opacity CDATA   #IMPLIED>

<!ELEMENT clipPath - - (%svgShape; | text | use | %svgDescriptive; | %svgAnimation; | script)*>
<!ATTLIST clipPath
  clipPathUnits (%Units;) #IMPLIED>


<!-- ===== Filters ================================================================= -->

<!ELEMENT filter - - (%svgFilterPrimitive; | %svgFilterLeaf;)*>
<!ATTLIST filter
  filterUnits    (%Units;) #IMPLIED
  primitiveUnits (%Units;) #IMPLIED>

<!ELEMENT (feBlend | feColorMatrix | feComposite | feConvolveMatrix | feDisplacementMap |
           feDropShadow | feFlood | feGaussianBlur | feMorphology | feOffset | feTile |
           feTurbulence)
          - - (%svgFilterLeaf;)*>
<!ELEMENT feComponentTransfer - - (feFuncR | feFuncG | feFuncB | feFuncA | %svgDescriptive; |
                                   script)*>
<!ELEMENT (feDiffuseLighting | feSpecularLighting)
          - - (feDistantLight | fePointLight | feSpotLight | %svgDescriptive; | script)*>
<!ELEMENT feImage - - (%svgFilterLeaf; | animateTransform)*>
<!ELEMENT feMerge - - (feMergeNode | %svgDescriptive; | script)*>
<!ELEMENT (feFuncR | feFuncG | feFuncB | feFuncA | feDistantLight | fePointLight | feSpotLight |
           feMergeNode)
          - - (%svgFilterLeaf;)*>

<!ATTLIST (%svgFilterPrimitive;)
  x                           CDATA #IMPLIED
  y                           CDATA #IMPLIED
  width                       CDATA #IMPLIED
  height                      CDATA #IMPLIED
  result                      CDATA #IMPLIED
  color-interpolation-filters (auto | sRGB | linearRGB) #IMPLIED>
<!ATTLIST (feBlend | feColorMatrix | feComponentTransfer | feComposite | feConvolveMatrix |
           feDiffuseLighting | feDisplacementMap | feDropShadow | feGaussianBlur | feMergeNode |
           feMorphology | feOffset | feSpecularLighting | feTile)
  in (%FilterInput;) #IMPLIED>
<!ATTLIST feBlend
  in2  (%FilterInput;) #IMPLIED
  mode (normal | multiply | screen | overlay | darken | lighten | color-dodge |
        color-burn | hard-light | soft-light | difference | exclusion | hue |
        saturation | color | luminosity) #IMPLIED>
<!ATTLIST feColorMatrix
  type   (matrix | saturate | hueRotate | luminanceToAlpha) #IMPLIED
  values CDATA #IMPLIED>
<!ATTLIST feComposite
  in2      (%FilterInput;) #IMPLIED
  k1       CDATA #IMPLIED
  k2       CDATA #IMPLIED
  k3       CDATA #IMPLIED
  k4       CDATA #IMPLIED
  operator (over | in | out | atop | xor | lighter | arithmetic) #IMPLIED>
<!ATTLIST feConvolveMatrix
  bias             CDATA #IMPLIED
  divisor          CDATA #IMPLIED
  edgeMode         (duplicate | wrap | none) #IMPLIED
  kernelMatrix     CDATA #IMPLIED
  kernelUnitLength CDATA #IMPLIED
  order            CDATA #IMPLIED
  preserveAlpha    (true | false) #IMPLIED
  targetX          NUMBER #IMPLIED
  targetY          NUMBER #IMPLIED>
<!ATTLIST feDiffuseLighting
  diffuseConstant  CDATA #IMPLIED
  kernelUnitLength CDATA #IMPLIED
  lighting-color   %Color; #IMPLIED
  surfaceScale     CDATA #IMPLIED>
<!ATTLIST feDisplacementMap
  in2              (%FilterInput;) #IMPLIED
  scale            CDATA #IMPLIED
  xChannelSelector (R | G | B | A) #IMPLIED
  yChannelSelector (R | G | B | A) #IMPLIED>
<!ATTLIST feDropShadow
  dx            CDATA #IMPLIED
  dy            CDATA #IMPLIED
  flood-color   %Color; #IMPLIED
  flood-opacity CDATA #IMPLIED
  stdDeviation  CDATA #IMPLIED>
<!ATTLIST feFlood
  flood-color   %Color; #IMPLIED
  flood-opacity CDATA #IMPLIED>
<!ATTLIST feGaussianBlur
  edgeMode     (duplicate | wrap | none) #IMPLIED
  stdDeviation CDATA #IMPLIED>
<!ATTLIST feImage
  crossorigin         (%CORS;) #IMPLIED
  preserveAspectRatio (%AspectRatio;) #IMPLIED>
<!ATTLIST feMorphology
  operator (erode | dilate) #IMPLIED
  radius   CDATA #IMPLIED>
<!ATTLIST feOffset
  dx CDATA #IMPLIED
  dy CDATA #IMPLIED>
<!ATTLIST feSpecularLighting
  kernelUnitLength CDATA #IMPLIED
  lighting-color   %Color; #IMPLIED
  specularConstant CDATA #IMPLIED
  specularExponent CDATA #IMPLIED
  surfaceScale     CDATA #IMPLIED>
<!ATTLIST feTurbulence
  baseFrequency CDATA #IMPLIED
  numOctaves    NUMBER #IMPLIED
  seed          CDATA #IMPLIED
  stitchTiles   (stitch | noStitch) #IMPLIED
  type          (fractalNoise | turbulence) #IMPLIED>
<!ATTLIST feDistantLight
  azimuth   CDATA #IMPLIED
  elevation CDATA #IMPLIED>
<!ATTLIST fePointLight
  x CDATA #IMPLIED
  y CDATA #IMPLIED
  z CDATA #IMPLIED>
<!ATTLIST feSpotLight
  limitingConeAngle CDATA #IMPLIED
  pointsAtX         CDATA #IMPLIED
  pointsAtY         CDATA #IMPLIED
  pointsAtZ         CDATA #IMPLIED
  specularExponent  CDATA #IMPLIED
  x                 CDATA #IMPLIED
  y                 CDATA #IMPLIED
  z                 CDATA #IMPLIED>
<!ATTLIST (feFuncR | feFuncG | feFuncB | feFuncA)
  type        (identity | table | discrete | linear | gamma) #REQUIRED
  tableValues CDATA #IMPLIED
  slope       CDATA #IMPLIED
  intercept   CDATA #IMPLIED
  amplitude   CDATA #IMPLIED
  exponent    CDATA #IMPLIED
  offset      CDATA #IMPLIED>


<!-- ===== Animation =============================================================== -->

<!ELEMENT (animate | animateTransform | set) - - (%svgDescriptive; | script)*>
<!ELEMENT animateMotion - - (mpath | %svgDescriptive; | script)*>
<!ELEMENT mpath - - (%svgDescriptive; | script)*>

<!ATTLIST (%svgAnimation;)
  begin       CDATA #IMPLIED
  dur         (indefinite | media) #IMPLIED
  end         CDATA #IMPLIED
  min         (media) #IMPLIED
  max         (media) #IMPLIED
  restart     (always | whenNotActive | never) #IMPLIED
  repeatCount (indefinite) #IMPLIED
  repeatDur   (indefinite) #IMPLIED
  fill        (freeze | remove) #IMPLIED
  onbegin     CDATA #IMPLIED
  onend       CDATA #IMPLIED
  onrepeat    CDATA #IMPLIED>
<!ATTLIST (animate | animateTransform | set)
  attributeName CDATA #IMPLIED>
<!ATTLIST (animate | animateMotion | animateTransform)
  calcMode   (discrete | linear | paced | spline) #IMPLIED
  values     CDATA #IMPLIED
  keyTimes   CDATA #IMPLIED
  keySplines CDATA #IMPLIED
  from       CDATA #IMPLIED
  to         CDATA #IMPLIED
  by         CDATA #IMPLIED
  additive   (replace | sum) #IMPLIED
  accumulate (none | sum) #IMPLIED>
<!ATTLIST animateMotion
  keyPoints CDATA #IMPLIED
  origin    (default) #IMPLIED
  path      CDATA #IMPLIED
  rotate    (auto | auto-reverse) #IMPLIED>
<!ATTLIST animateTransform
  type (translate | scale | rotate | skewX | skewY) #IMPLIED>
<!ATTLIST set
  to CDATA #IMPLIED>


<!-- ===== Attributes of many elements ============================================= -->

<!ENTITY % svgDrawn
  "svg | g | defs | symbol | use | image | text | tspan | textPath | switch | foreignObject |
   marker | mask | pattern | clipPath | %svgShape;">

<!ENTITY % svgHelper
  "view | desc | metadata | linearGradient | radialGradient | stop | filter |
   %svgFilterPrimitive; | feFuncR | feFuncG | feFuncB | feFuncA | feDistantLight |
   fePointLight | feSpotLight | feMergeNode | %svgAnimation; | mpath">

<!ATTLIST (%svgDrawn; | %svgHelper;)
  class     CDATA                #IMPLIED
  id        ID                   #IMPLIED
  lang      (%Language;)         #IMPLIED
  style     CDATA                #IMPLIED
  tabindex  NUMBER               #IMPLIED
  xml:space (default | preserve) #IMPLIED>

<!ATTLIST (%svgDrawn;)
  requiredExtensions CDATA #IMPLIED
  systemLanguage     (%Language;) #IMPLIED>

<!ATTLIST (image | use | textPath | linearGradient | radialGradient | pattern | feImage | mpath |
           %svgAnimation;)
  href       %URI; #IMPLIED
  xlink:href %URI; #IMPLIED>

<!ATTLIST (svg | use | image | symbol | foreignObject | mask | pattern | filter)
  height CDATA #IMPLIED
  width  CDATA #IMPLIED
  x      CDATA #IMPLIED
  y      CDATA #IMPLIED>

<!ATTLIST (svg | symbol | marker | pattern | view)
  preserveAspectRatio (%AspectRatio;) #IMPLIED
  viewBox             CDATA #IMPLIED>

<!ATTLIST (svg | g | defs | use | image | text | switch | foreignObject | clipPath | %svgShape;)
  transform        CDATA #IMPLIED
  transform-box    (content-box | border-box | fill-box | stroke-box | view-box) #IMPLIED
  transform-origin CDATA #IMPLIED>

<!-- Painting and visibility. -->
<!ATTLIST (%svgDrawn;)
  clip-path           (none) #IMPLIED
  clip-rule           (nonzero | evenodd) #IMPLIED
  color               %Color; #IMPLIED
  color-interpolation (auto | sRGB | linearRGB) #IMPLIED
  cursor              (auto | crosshair | default | pointer | move | text | wait |
                       help) #IMPLIED
  display             (inline | block | none) #IMPLIED
  fill                %Color; #IMPLIED
  fill-opacity        CDATA #IMPLIED
  fill-rule           (nonzero | evenodd) #IMPLIED
  filter              (none) #IMPLIED
  image-rendering     (auto | optimizeSpeed | optimizeQuality) #IMPLIED
  marker-end          (none) #IMPLIED
  marker-mid          (none) #IMPLIED
  marker-start        (none) #IMPLIED
  mask                (none) #IMPLIED
  mask-type           (luminance | alpha) #IMPLIED
  opacity             CDATA #IMPLIED
  overflow            (visible | hidden | scroll | auto) #IMPLIED
  paint-order         (normal | fill | stroke | markers) #IMPLIED
  pointer-events      (bounding-box | visiblePainted | visibleFill | visibleStroke |
                       visible | painted | fill | stroke | all | none) #IMPLIED
  shape-rendering     (auto | optimizeSpeed | crispEdges | geometricPrecision) #IMPLIED
  stroke              %Color; #IMPLIED
  stroke-dasharray    (none) #IMPLIED
  stroke-dashoffset   CDATA #IMPLIED
  stroke-linecap      (butt | round | square) #IMPLIED
  stroke-linejoin     (miter | round | bevel) #IMPLIED
  stroke-miterlimit   CDATA #IMPLIED
  stroke-opacity      CDATA #IMPLIED
  stroke-width        CDATA #IMPLIED
  vector-effect       (none | non-scaling-stroke | non-scaling-size | non-rotation |
                       fixed-position) #IMPLIED
  visibility          (visible | hidden | collapse) #IMPLIED>

<!-- Text; on a container, for the text in it. -->
<!ATTLIST (svg | g | text | tspan | textPath)
  alignment-baseline (auto | baseline | before-edge | text-before-edge | middle |
                      central | after-edge | text-after-edge | ideographic |
                      alphabetic | hanging | mathematical) #IMPLIED
  baseline-shift     (baseline | sub | super) #IMPLIED
  direction          (ltr | rtl) #IMPLIED
  dominant-baseline  (auto | ideographic | alphabetic | hanging | mathematical |
                      central | middle | text-after-edge | text-before-edge) #IMPLIED
  font-family        CDATA #IMPLIED
  font-size          CDATA #IMPLIED
  font-size-adjust   (none) #IMPLIED
  font-stretch       (normal | ultra-condensed | extra-condensed | condensed |
                      semi-condensed | semi-expanded | expanded | extra-expanded |
                      ultra-expanded) #IMPLIED
  font-style         (normal | italic | oblique) #IMPLIED
  font-variant       (normal | small-caps) #IMPLIED
  font-weight        (normal | bold | bolder | lighter | 100 | 200 | 300 | 400 | 500 |
                      600 | 700 | 800 | 900) #IMPLIED
  letter-spacing     (normal) #IMPLIED
  text-anchor        (start | middle | end) #IMPLIED
  text-decoration    (none | underline | overline | line-through | blink) #IMPLIED
  text-overflow      (clip | ellipsis) #IMPLIED
  text-rendering     (auto | optimizeSpeed | optimizeLegibility | geometricPrecision) #IMPLIED
  unicode-bidi       (normal | embed | isolate | bidi-override | isolate-override |
                      plaintext) #IMPLIED
  white-space        (normal | pre | nowrap | pre-wrap | pre-line | break-spaces) #IMPLIED
  word-spacing       (normal) #IMPLIED
  writing-mode       (horizontal-tb | vertical-rl | vertical-lr | lr-tb | rl-tb |
                      tb-rl | lr | rl | tb) #IMPLIED>

<!-- ARIA and events. -->
<!ATTLIST (%svgDrawn;)
  aria-describedby     IDREFS #IMPLIED
  aria-details         IDREFS #IMPLIED
  aria-hidden          (true | false) #IMPLIED
  aria-label           CDATA #IMPLIED
  aria-labelledby      IDREFS #IMPLIED
  aria-live            (off | polite | assertive) #IMPLIED
  aria-roledescription CDATA #IMPLIED
  role                 (img | none | presentation | group | graphics-document |
                        graphics-object | graphics-symbol | button | link) #IMPLIED
  onblur               CDATA #IMPLIED
  onclick              CDATA #IMPLIED
  oncontextmenu        CDATA #IMPLIED
  ondblclick           CDATA #IMPLIED
  onfocus              CDATA #IMPLIED
  onkeydown            CDATA #IMPLIED
  onkeyup              CDATA #IMPLIED
  onload               CDATA #IMPLIED
  onmousedown          CDATA #IMPLIED
  onmouseenter         CDATA #IMPLIED
  onmouseleave         CDATA #IMPLIED
  onmousemove          CDATA #IMPLIED
  onmouseout           CDATA #IMPLIED
  onmouseover          CDATA #IMPLIED
  onmouseup            CDATA #IMPLIED
  onpointercancel      CDATA #IMPLIED
  onpointerdown        CDATA #IMPLIED
  onpointerenter       CDATA #IMPLIED
  onpointerleave       CDATA #IMPLIED
  onpointermove        CDATA #IMPLIED
  onpointerup          CDATA #IMPLIED
  ontouchend           CDATA #IMPLIED
  ontouchmove          CDATA #IMPLIED
  ontouchstart         CDATA #IMPLIED
  onwheel              CDATA #IMPLIED>

<!-- An attribute declared for a list of elements is one and the same for all of them, so one
     entry serves them. -->
<!--ATTRIBUTEEDITORS
image.href=uri
image.xlink:href=uri
stop.stop-color=color
feDropShadow.flood-color=color
feFlood.flood-color=color
feDiffuseLighting.lighting-color=color
feSpecularLighting.lighting-color=color
svg.color=color
svg.fill=color
svg.stroke=color
-->

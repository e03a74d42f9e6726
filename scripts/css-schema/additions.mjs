// What the public data lacks or says in another way, by hand.

// Grammar's terminals -> our types; '' drops the terminal.
export const TERMINALS = {
    angle: 'angle', length: 'length', percentage: 'percentage', time: 'time', frequency: 'frequency',
    resolution: 'resolution', number: 'number', integer: 'number', ratio: 'ratio', string: 'string',
    flex: 'fraction', url: 'uri', color: 'color',
    'custom-ident': 'custom-ident', 'dashed-ident': 'custom-ident', ident: 'custom-ident',
    'counter-style-name': 'counter-style', 'family-name': 'family-name', 'generic-family': 'family-name',
    // They say what a reader makes of a value, not what a person writes.
    zero: '', x: '', y: '', dimension: '', 'declaration-value': '', 'any-value': '', 'hex-color': '',
    'whole-value': '',
};

const wordList = (text) => text.trim().split(/\s+/);

// 49 units of length.
const LENGTH_UNITS = wordList(`
    px em rem ex rex ch rch cap rcap ic ric lh rlh
    vw vh vi vb vmin vmax svw svh svi svb svmin svmax lvw lvh lvi lvb lvmin lvmax dvw dvh dvi dvb dvmin dvmax
    cqw cqh cqi cqb cqmin cqmax cm mm Q in pt pc`);

// The types that every sheet builds upon. The first unit is the one the dialog shows.
export const TYPES = {
    'angle': {editable: true, units: wordList('deg grad rad turn'), values: ['calc()']},
    'color': {editable: true},
    'counter-style': {values: wordList(`
        arabic-indic armenian bengali cambodian circle cjk-decimal cjk-earthly-branch cjk-heavenly-stem cjk-ideographic
        decimal decimal-leading-zero devanagari disc disclosure-closed disclosure-open ethiopic-numeric georgian
        gujarati gurmukhi hebrew hiragana hiragana-iroha japanese-formal japanese-informal kannada katakana
        katakana-iroha khmer korean-hangul-formal korean-hanja-formal korean-hanja-informal lao lower-alpha
        lower-armenian lower-greek lower-latin lower-roman malayalam mongolian myanmar oriya persian
        simp-chinese-formal simp-chinese-informal square tamil telugu thai tibetan trad-chinese-formal
        trad-chinese-informal upper-alpha upper-armenian upper-latin upper-roman`)},
    'css-wide': {values: wordList('inherit initial revert revert-layer unset var()')},
    'custom-ident': {},
    'family-name': {editable: true, units: ['font'], values: wordList(`
        cursive emoji fangsong fantasy math monospace sans-serif serif system-ui
        ui-monospace ui-rounded ui-sans-serif ui-serif`)},
    'fraction': {units: ['fr']},
    'frequency': {editable: true, units: wordList('Hz kHz'), values: ['calc()']},
    'length': {editable: true, units: LENGTH_UNITS, values: wordList('calc() clamp() max() min()')},
    'number': {},
    'percentage': {editable: true, units: ['%'], values: wordList('calc() clamp() max() min()')},
    'resolution': {units: wordList('dpi dpcm dppx x')},
    'string': {},
    'time': {editable: true, units: wordList('s ms'), values: ['calc()']},
    'uri': {editable: true, values: ['url()']},
};

// Words that stand beside another value only, and that people look for all the same:
// by property, and by type.
export const KEPT = {
    'border-image-slice': ['fill'],
    'box-shadow': ['inset'],
    'color-scheme': ['only'],
    'scroll-snap-type': ['mandatory', 'proximity'],
    'text-indent': ['each-line', 'hanging'],
};
export const KEPT_IN_TYPE = {'grid-line': ['span']};

// Aural properties of CSS2, scroll bars' colours without their prefix, smoothing
// of type, and what goes into @font-face.
const aural = (inherited, grammar) => ({inherited, media: ['aural'], syntax: grammar});
const visual = (inherited, grammar) => ({inherited, media: ['visual'], syntax: grammar});
const CUE = '<url> | none';
const PAUSE = '<time> | <percentage>';

export const PROPERTIES = {
    'azimuth': aural(true, '<angle> | left-side | far-left | left | center-left | center | center-right | right | far-right | right-side | behind | leftwards | rightwards'),
    'cue': aural(false, CUE), 'cue-after': aural(false, CUE), 'cue-before': aural(false, CUE),
    'elevation': aural(true, '<angle> | below | level | above | higher | lower'),
    'pause': aural(false, PAUSE), 'pause-after': aural(false, PAUSE), 'pause-before': aural(false, PAUSE),
    'pitch': aural(true, '<frequency> | x-low | low | medium | high | x-high'),
    'pitch-range': aural(true, '<number>'),
    'play-during': aural(false, '<url> || mix || repeat | auto | none'),
    'richness': aural(true, '<number>'),
    'speak': aural(true, 'auto | never | always | normal | none | spell-out'),
    'speak-header': aural(true, 'once | always'),
    'speak-numeral': aural(true, 'digits | continuous'),
    'speak-punctuation': aural(true, 'code | none'),
    'speech-rate': aural(true, '<number> | x-slow | slow | medium | fast | x-fast | faster | slower'),
    'stress': aural(true, '<number>'),
    'voice-family': aural(true, 'male | female | child | <string>'),
    'volume': aural(true, '<number> | <percentage> | silent | x-soft | soft | medium | loud | x-loud'),
    'scrollbar-3dlight-color': visual(true, '<color>'), 'scrollbar-arrow-color': visual(true, '<color>'),
    'scrollbar-base-color': visual(true, '<color>'), 'scrollbar-darkshadow-color': visual(true, '<color>'),
    'scrollbar-face-color': visual(true, '<color>'), 'scrollbar-highlight-color': visual(true, '<color>'),
    'scrollbar-shadow-color': visual(true, '<color>'), 'scrollbar-track-color': visual(true, '<color>'),
    '-moz-osx-font-smoothing': visual(true, 'auto | grayscale'),
    '-ms-interpolation-mode': visual(true, 'bicubic | nearest-neighbor'),
    '-webkit-font-smoothing': visual(true, 'auto | none | antialiased | subpixel-antialiased'),
    'font-display': visual(false, 'auto | block | swap | fallback | optional'),
    'src': visual(false, '<url> | local() | format() | tech()'),
    'unicode-range': visual(false, 'unicode-range'),
};

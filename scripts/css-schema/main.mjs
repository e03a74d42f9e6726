// main.mjs PACKAGES OUT [--report]: public data in, css.xml out.
import {createRequire} from 'node:module';
import {writeFileSync} from 'node:fs';
import {Flattener} from './flatten.mjs';
import {KEPT, KEPT_IN_TYPE, PROPERTIES, TERMINALS, TYPES} from './additions.mjs';
import {writeSchema} from './write.mjs';

const [packages, outFile, ...options] = process.argv.slice(2);
const require = createRequire(`${packages}/package.json`);
const mdnProperties = require('mdn-data/css/properties.json');
const mdnSyntaxes = require('mdn-data/css/syntaxes.json');
const webref = require('@webref/css/css.json');
const known = require('@mdn/browser-compat-data').css.properties;

const byName = (list) => new Map(list.filter((item) => item.syntax).map((item) => [item.name, item]));
const webrefTypes = byName(webref.types);

const MEDIA = {
    noPracticalMedia: 'all', none: 'all', visualInContinuousMediaNoEffectInOverflowColumns: 'visual', undefined: 'visual', '': 'visual',
};

// A property that only drafts know is noise: some browser's own data must know it, and run it.
function isUsed(name) {
    return Object.values(known[name]?.__compat?.support ?? {}).flat()
        .some((entry) => entry.version_added && entry.version_added !== 'preview' && !entry.flags);
}

function gatherProperties() {
    const result = new Map();
    for (const property of webref.properties) {
        if (!isUsed(property.name)) continue;
        result.set(property.name, {
            syntax: property.syntax ?? `<'${property.legacyAliasOf}'>`,
            inherited: property.inherited === 'yes', media: ['visual'],
            shorthand: /see individual/.test(property.initial ?? ''),
        });
    }
    for (const [name, property] of Object.entries(mdnProperties)) {
        if (name === '--*') continue;
        const media = [property.media].flat().map((medium) => MEDIA[medium] ?? medium);
        result.set(name, {
            syntax: property.syntax, inherited: property.inherited, media, shorthand: Array.isArray(property.initial),
        });
    }
    for (const [name, property] of Object.entries(PROPERTIES)) result.set(name, property);
    return result;
}

const properties = gatherProperties();
const syntaxOf = (type) => mdnSyntaxes[type]?.syntax ?? webrefTypes.get(type)?.syntax;

const unknown = new Set();
function terminal(type) {
    if (type in TERMINALS) return TERMINALS[type];
    if (syntaxOf(type) !== undefined) return null;
    unknown.add(type);
    return '';
}

const source = {syntax: syntaxOf, terminal, propertySyntax: (name) => properties.get(name)};

// A type is worth a name of its own if two properties use it.
function countUses() {
    const uses = new Map();
    const counter = new Flattener({...source, named: (type) => type});
    for (const name of properties.keys()) {
        for (const type of counter.property(name).types) uses.set(type, (uses.get(type) ?? new Set()).add(name));
    }
    return uses;
}

const uses = countUses();
const flattener = new Flattener({...source, named: (type) => ((uses.get(type)?.size ?? 0) > 1 ? type : null)});

// One spelling for each name, the one in small letters if there is a choice.
const spelling = new Map();
function spell(word) {
    const key = word.toLowerCase();
    if (!spelling.has(key) || word === key) spelling.set(key, word);
}

function describeTypes() {
    const types = new Map(Object.entries(TYPES).map(([name, type]) => [name, {
        editable: type.editable ?? false, units: type.units ?? [], words: new Set(type.values ?? []), types: new Set(),
    }]));
    flattener.type('color').words.forEach((word) => types.get('color').words.add(word));
    const wanted = [...new Set([...properties.keys()].flatMap((name) => [...flattener.property(name).types]))];
    while (wanted.length) {
        const name = wanted.pop();
        if (types.has(name)) continue;
        const {words, types: inner} = flattener.type(name);
        (KEPT_IN_TYPE[name] ?? []).forEach((word) => words.add(word));
        types.set(name, {editable: false, units: [], words, types: inner});
        wanted.push(...inner);
    }
    return types;
}

// The engine asks for an editor only through a type that the property itself names, or
// that such a type names: so a type names all that it reaches.
function closeReferences(types) {
    for (const type of types.values()) {
        for (const name of type.types) types.get(name)?.types.forEach((inner) => type.types.add(inner));
    }
}

function describeProperties(types) {
    const editable = new Set([...types].filter(([, type]) => type.editable).map(([name]) => name));
    const offered = (name) => (word) => !editable.has(word) && (name.startsWith('-') || !word.startsWith('-'));
    const wide = new Set(TYPES['css-wide'].values);
    for (const type of types.values()) type.words = new Set([...type.words].filter(offered('')));
    return [...properties].map(([name, property]) => {
        const {words, types: used, lost} = flattener.property(name);
        return {
            name, inherited: property.inherited, media: property.media, lost,
            words: new Set([...words].filter(offered(name)).filter((word) => !wide.has(word))),
            types: new Set([...used, 'css-wide']),
        };
    });
}

// Before anything else asks, so that an alias takes the kept words over too.
for (const [name, words] of Object.entries(KEPT)) words.forEach((word) => flattener.property(name).words.add(word));
const types = describeTypes();
closeReferences(types);

// A plain type that has a property's name would take that property's values over.
const rename = (name) => (properties.has(name) && !types.get(name)?.editable ? `${name}-value` : name);

const list = describeProperties(types);
list.forEach((property) => property.words.forEach(spell));
types.forEach((type) => type.words.forEach(spell));

const schema = {types, properties: list, spell: (word) => spelling.get(word.toLowerCase()), rename};
writeFileSync(outFile, writeSchema(schema));

const words = new Set(spelling.values());
const inherited = list.filter((property) => property.inherited).length;
const editors = [...types.values()].filter((type) => type.editable).length;
console.log(`${list.length} properties (${inherited} inherited), ${types.size} types (${editors} editable), ${words.size} words`);
if (options.includes('--report')) {
    console.log(`types without a grammar: ${[...unknown].join(' ')}`);
    for (const {name, lost} of list) if (lost.size) console.log(`${name}: left out ${[...lost].join(' ')}`);
}

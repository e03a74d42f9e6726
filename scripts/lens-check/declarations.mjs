// declarations.mjs PACKAGES SHEET: every declaration of a sheet as "nameOffset valueOffset name",
// offsets in bytes, the second behind the colon.
import {createRequire} from 'node:module';
import {readFileSync} from 'node:fs';

const [packages, sheet] = process.argv.slice(2);
const tree = createRequire(`${packages}/package.json`)('css-tree');
const text = readFileSync(sheet, 'latin1');  // a character is a byte
let unread = 0;

const parsed = tree.parse(text, {positions: true, parseValue: false, parseCustomProperty: false, onParseError: () => ++unread});
const lines = [];
tree.walk(parsed, (node) => {
    if (node.type !== 'Declaration') return;
    const start = node.loc.start.offset;
    const colon = text.indexOf(':', start + node.property.length);
    lines.push(`${start} ${colon + 1} ${node.property}`);
});
if (unread) console.error(`${sheet}: ${unread} places that the other parser does not read`);
console.log(lines.join('\n'));

// Reads a value grammar such as  none | [ <length> || <'border-style'> ]{1,4}
// into a tree of nodes:
//   {kind: 'word'|'call'|'type'|'property', name, optional}
//   {kind: '|' | '||' | '&&' | ' ', items, optional}
// A call keeps its name and loses its arguments; literals and numbers vanish.

const TOKEN = /\s+|'[^']*'|<'[^']+'>|<[^>]+>|\|\||&&|[-@]?[A-Za-z0-9_][\w-]*\(?|\{[^}]*\}|./gsu;

// From the loosest to the tightest.
const COMBINATORS = ['|', '||', '&&', ' '];

export function parseGrammar(text) {
    const tokens = text.match(TOKEN)?.filter((token) => token.trim() !== '') ?? [];
    let at = 0;

    const nothing = () => ({kind: ' ', items: [], optional: true});

    function skipArguments() {
        for (let depth = 1; at < tokens.length && depth > 0; ++at) {
            if (tokens[at].endsWith('(')) ++depth;
            else if (tokens[at] === ')') --depth;
        }
    }

    function parseReference(token) {
        if (token.startsWith("<'")) return {kind: 'property', name: token.slice(2, -2).replace(/\[.*$/, '').trim()};
        const name = token.slice(1, -1).replace(/\s*\[.*$/s, '').trim();
        return name.endsWith('()') ? {kind: 'call', name} : {kind: 'type', name};
    }

    function parsePrimary() {
        const token = tokens[at++];
        if (token === '[') {
            const group = parseCombined(0);
            if (tokens[at] === ']') ++at;
            return group;
        }
        if (/^<['\w-]/.test(token)) return parseReference(token);
        if (token === '(') {
            skipArguments();
            return {...nothing(), optional: false};
        }
        if (token.endsWith('(')) {
            skipArguments();
            return {kind: 'call', name: token + ')'};
        }
        // What is no word (a literal, a number, an at-word) must be there, but gives no name.
        if (/^-?[A-Za-z][\w-]*$/.test(token)) return {kind: 'word', name: token};
        return {...nothing(), optional: false};
    }

    function parseMultiplied() {
        let node = parsePrimary();
        for (; at < tokens.length; ++at) {
            const token = tokens[at];
            if (token === '?' || token === '*') node = {...node, optional: true};
            else if (/^\{0/.test(token)) node = {...node, optional: true};
            else if (token === '!') node = {...node, needed: true};
            // Two or more of a thing: one of them cannot stand alone.
            else if (/^\{[2-9]/.test(token)) node = {kind: ' ', items: [node, {...nothing(), optional: false}]};
            else if (token !== '#' && token !== '+' && !token.startsWith('{')) break;
        }
        return node;
    }

    function endsHere(level) {
        const token = tokens[at];
        if (token === undefined || token === ']') return true;
        return COMBINATORS.slice(0, level).includes(token);
    }

    function parseCombined(level) {
        if (level === COMBINATORS.length) return parseMultiplied();
        const items = [parseCombined(level + 1)];
        const combinator = COMBINATORS[level];
        while (!endsHere(level)) {
            if (combinator === ' ') {
                if (COMBINATORS.includes(tokens[at])) break;
            } else if (tokens[at] === combinator) {
                if (++at >= tokens.length) break;
            } else {
                break;
            }
            items.push(parseCombined(level + 1));
        }
        return items.length === 1 ? items[0] : {kind: combinator, items};
    }

    return tokens.length ? parseCombined(0) : nothing();
}

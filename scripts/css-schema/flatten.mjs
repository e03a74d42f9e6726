// Turns value grammars into flat lists: which words, calls and types a property
// takes, without order, counts and punctuation.
//
// A list holds single words, and a choice is written with a ";" behind it. So a word
// is offered where it is a whole value by itself: "safe" is not, it only goes in
// front of "center". A type is kept wherever it stands, because "length..." helps in
// the middle of a value too; and a shorthand takes all words of its own grammar.
import {parseGrammar} from './grammar.mjs';

const empty = () => ({words: new Set(), types: new Set()});

function addAll(to, from) {
    from.words.forEach((word) => to.words.add(word));
    from.types.forEach((type) => to.types.add(type));
}

export class Flattener {
    // data: {syntax(type), terminal(type) -> our type's name or null, propertySyntax(name), keep(property)}
    constructor(data) {
        this.data = data;
        this.trees = new Map();
        this.properties = new Map();
        this.dropped = new Map();
    }

    tree(type) {
        if (!this.trees.has(type)) this.trees.set(type, parseGrammar(this.data.syntax(type) ?? ''));
        return this.trees.get(type);
    }

    // May the node be left out altogether?
    nullable(node, open = new Set()) {
        if (node.optional) return true;
        if (node.needed) return false;
        const every = () => node.items.every((item) => this.nullable(item, open));
        const some = () => node.items.some((item) => this.nullable(item, open));
        if (node.kind === ' ' || node.kind === '&&') return node.items.length > 0 && every();
        if (node.kind === '|') return some();
        if (node.kind === '||') return every();
        if (node.kind !== 'type' || this.data.terminal(node.name) !== null || open.has(node.name)) return false;
        open.add(node.name);
        const result = this.nullable(this.tree(node.name), open);
        open.delete(node.name);
        return result;
    }

    // What the node gives. With alone false its words only go beside others.
    collect(node, alone, whole, into, path = []) {
        switch (node.kind) {
            case 'word':
            case 'call':
                if (alone || whole) into.words.add(node.name);
                else into.lost?.add(node.name);
                return;
            case 'property':
                addAll(into, this.property(node.name));
                return;
            case 'type':
                this.collectType(node.name, alone, whole, into, path);
                return;
            case '|':
            case '||':
                node.items.forEach((item) => this.collect(item, alone, whole, into, path));
                return;
            default: {
                const needed = node.items.filter((item) => !this.nullable(item));
                node.items.forEach((item) => {
                    const others = needed.some((other) => other !== item);
                    this.collect(item, alone && !others, whole, into, path);
                });
            }
        }
    }

    collectType(name, alone, whole, into, path) {
        const terminal = this.data.terminal(name);
        if (terminal !== null) {
            if (terminal) into.types.add(terminal);
            return;
        }
        if (path.includes(name)) return;
        const named = this.data.named?.(name);
        if (named && (alone || whole)) into.types.add(named);
        else this.collect(this.tree(name), alone, whole, into, [...path, name]);
    }

    type(name) {
        const result = {...empty(), lost: new Set()};
        this.collect(this.tree(name), true, false, result, [name]);
        return result;
    }

    property(name) {
        if (this.properties.has(name)) return this.properties.get(name);
        const result = {...empty(), lost: new Set()};
        this.properties.set(name, result);
        const {syntax, shorthand} = this.data.propertySyntax(name) ?? {syntax: ''};
        this.collect(parseGrammar(syntax), true, shorthand, result);
        result.lost.forEach((word) => {
            if (result.words.has(word)) result.lost.delete(word);
        });
        return result;
    }
}

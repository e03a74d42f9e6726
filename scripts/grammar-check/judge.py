"""Compares what the grammar says at each place of valid documents with an independent reading.

    judge.py TOOL dtd FILE.dtd DOCUMENT...     models as libxml2 has read them, matched here
    judge.py TOOL xsd FILE.xsd DOCUMENT...     python3-xmlschema's own visitor of models

Both ways: nothing missing, nothing extra. Prints each kind of difference and its number.
"""
import collections, functools, os, shutil, subprocess, sys, tempfile
from lxml import etree
from xml.etree import ElementTree

NONE, EMPTY = ("none",), ("empty",)


def seq(a, b):
    if NONE in (a, b):
        return NONE
    return b if a == EMPTY else a if b == EMPTY else ("seq", a, b)


def alt(a, b):
    return b if a == NONE else a if b == NONE or a == b else ("alt", a, b)


def term(node):
    """A content declaration of libxml2 as an expression."""
    if node is None or node.type == "pcdata":
        inner = EMPTY
    elif node.type == "element":
        inner = ("name", node.name)
    elif node.type == "seq":
        inner = seq(term(node.left), term(node.right))
    else:
        inner = ("alt", term(node.left), term(node.right))
    occur = node.occur if node is not None else "once"
    if occur == "opt":
        return alt(inner, EMPTY)
    if occur == "mult":
        return ("star", inner)
    return seq(inner, ("star", inner)) if occur == "plus" else inner


@functools.lru_cache(None)
def nullable(t):
    if t[0] in ("seq", "alt"):
        both = nullable(t[1]), nullable(t[2])
        return all(both) if t[0] == "seq" else any(both)
    return t[0] in ("empty", "star")


@functools.lru_cache(None)
def after(t, name):
    if t[0] == "name":
        return EMPTY if t[1] == name else NONE
    if t[0] == "alt":
        return alt(after(t[1], name), after(t[2], name))
    if t[0] == "star":
        return seq(after(t[1], name), t)
    if t[0] == "seq":
        rest = seq(after(t[1], name), t[2])
        return alt(rest, after(t[2], name)) if nullable(t[1]) else rest
    return NONE


@functools.lru_cache(None)
def firsts(t):
    if t[0] == "name":
        return frozenset([t[1]])
    if t[0] == "alt":
        return firsts(t[1]) | firsts(t[2])
    if t[0] == "star":
        return firsts(t[1])
    if t[0] == "seq":
        return firsts(t[1]) | firsts(t[2]) if nullable(t[1]) else firsts(t[1])
    return frozenset()


class DTD:
    def __init__(self, path):
        dtd = etree.DTD(path)
        self.names = {e.name for e in dtd.iterelements() if e.type != "undefined"}
        self.types = {e.name: e.type for e in dtd.iterelements()}
        self.terms = {e.name: term(e.content) for e in dtd.iterelements()}

    def may_start(self, parent, before):
        if self.types.get(parent.tag) == "any":
            return self.names
        t = self.terms[parent.tag]
        if self.types[parent.tag] == "mixed":
            t = ("star", t)
        for child in before:
            t = after(t, child)
        return firsts(t)


class XSD:
    def __init__(self, path):
        import xmlschema
        self.schema = xmlschema.XMLSchema(path, validation="skip")
        self.paths = {}

    def may_start(self, parent, before):
        path = []
        node = parent
        while node is not None:
            path.append(node.tag)
            node = node.getparent()
        declared = self.schema.maps.elements[path.pop()]
        while path:
            tag = path.pop()
            declared = next((e for e in declared.type.content.iter_elements() if e.match(tag) is not None), None)
            if declared is None or getattr(declared, "type", None) is None:
                return None
        if declared.type.is_simple() or declared.type.has_simple_content():
            return frozenset()
        names = set()
        for element in declared.type.content.iter_elements():
            if element.name:
                names.add(element.name)
                names |= {e.name for e in element.iter_substitutes()} if hasattr(element, "iter_substitutes") else set()
        return {name for name in names if self.fits(declared, parent.tag, before + [name])}

    @staticmethod
    def fits(declared, tag, children):
        """Of an element with these children the last one is not the first that is wrong."""
        from xmlschema import XMLSchemaChildrenValidationError
        element = ElementTree.Element(tag)
        for child in children:
            ElementTree.SubElement(element, child)
        for error in declared.iter_errors(element):
            if isinstance(error, XMLSchemaChildrenValidationError) and error.elem is element:
                return error.index >= len(children)
        return True


def local(name):
    return name.rsplit("}", 1)[-1]


def main():
    tool, kind, schema, documents = sys.argv[1], sys.argv[2], sys.argv[3], sys.argv[4:]
    work = tempfile.mkdtemp()
    judge = DTD(schema) if kind == "dtd" else XSD(schema)
    options = ["--dtd", schema, "--xml"] if kind == "dtd" else ["--schemas", os.path.dirname(os.path.abspath(schema))]
    places, known = 0, {}
    missing, extra = collections.Counter(), collections.Counter()
    for document in documents:
        name = document
        if kind == "xsd":
            name = os.path.join(work, "document.judged")
            shutil.copy(document, name)
            options[2:] = ["--map", ".judged=" + os.path.basename(schema)]
        lines = subprocess.run([tool, *options, "--sets", "--show", "0", name], stdout=subprocess.PIPE,
                               stderr=subprocess.DEVNULL).stdout.decode("utf-8", "replace").splitlines()
        tree = etree.parse(document, etree.XMLParser(load_dtd=False, resolve_entities=False, no_network=True))
        elements = [e for e in tree.iter() if isinstance(e.tag, str)]
        if kind == "dtd":
            for e in elements:
                e.tag = local(e.tag)
        if len(lines) != len(elements):
            print(f"{document}: {len(lines)} places, {len(elements)} elements")
            continue
        for line, element in zip(lines, elements):
            parent = element.getparent()
            if parent is None:
                continue
            before = [e.tag for e in element.itersiblings(preceding=True) if isinstance(e.tag, str)][::-1]
            key = parent.tag, tuple(before), tuple(e.tag for e in parent.iterancestors())
            if key not in known:
                known[key] = judge.may_start(parent, before)
            wanted = known[key]
            if wanted is None:
                continue
            places += 1
            found = {local(n).rsplit(":", 1)[-1] for n in line.split("\t")[4].split()}
            wanted = {local(n) for n in wanted}
            missing.update((local(parent.tag), n) for n in wanted - found)
            extra.update((local(parent.tag), n) for n in found - wanted)
    shutil.rmtree(work)
    print(f"{places} places judged: {sum(missing.values())} missing, {sum(extra.values())} extra")
    for title, counter in (("missing", missing), ("extra", extra)):
        for (parent, name), count in counter.most_common(10):
            print(f"    {title} in {parent}: {name} ({count})")
    return 1 if missing or extra else 0


sys.exit(main())

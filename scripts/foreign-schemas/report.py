"""Prints what the command makes of schema files: report.py COMMAND LIST [--slow MS] [FILE...]"""

import collections
import json
import os
import subprocess
import sys
import time

import xmlschema
from xmlschema.validators import XsdElement

LANGUAGE = "{http://www.w3.org/2001/XMLSchema}"
XML = "{http://www.w3.org/XML/1998/namespace}"
COMPARED = ("docbook.xsd", "collada_schema_1_4_1.xsd", "WSDL/wsdl.xsd", "xhtml1-strict.xsd",
            "5.11.3/windows-definitions-schema.xsd", "5.11.3/oval-results-schema.xsd")


def folder_of(path):
    """The folder that a package's files include each other in."""
    for folder in ("/usr/share/openscap/schemas", "/usr/lib/python3/dist-packages/xmlschema/schemas"):
        if path.startswith(folder):
            return folder
    return os.path.dirname(path)


def run(command, path):
    """The command's answer (None if it gave none), milliseconds and peak memory in MB."""
    # A process made by this large one would be counted as no smaller, so "time" makes it.
    words = ["/usr/bin/time", "-f", "%M", "-o", "/dev/fd/1", "-a", "--", command, "schema", path, "--json",
             "--schemas", folder_of(path)]
    start = time.perf_counter()
    process = subprocess.run(words, capture_output=True, check=False)
    elapsed = (time.perf_counter() - start) * 1000
    # The answer is one line; behind it "time" tells of an exit status, and of the memory.
    lines = process.stdout.splitlines()
    memory = lines[-1]
    try:
        answer = json.loads(lines[0])
    except ValueError:
        answer = None
    errors = process.stderr.decode(errors="replace").strip()
    return answer, elapsed, int(memory.split()[-1]) / 1024, errors


def local(name):
    return name.split("}")[-1].split(":")[-1]


def attribute_key(name):
    """An attribute of a namespace is another than one of its name without."""
    return ("*:" if "}" in name or ":" in name else "") + local(name)


def values_of(kind):
    """All values that a simple type allows by enumeration."""
    found, seen, waiting = set(), set(), [kind]
    while waiting:
        kind = waiting.pop()
        if kind is None or id(kind) in seen:
            continue
        seen.add(id(kind))
        facet = kind.facets.get(LANGUAGE + "enumeration") if hasattr(kind, "facets") else None
        if facet is not None:
            found.update(value.attrib["value"] for value in facet)
        elif getattr(kind, "member_types", None):
            waiting.extend(kind.member_types)
        elif getattr(kind, "item_type", None) is not None:
            waiting.append(kind.item_type)
        else:
            waiting.append(getattr(kind, "base_type", None))
    return {value for value in found if value}


def in_place_of(schema, element):
    """The element, if it may stand in a document, and those that may stand for it."""
    found = [] if element.abstract else [element]
    for member in schema.maps.substitution_groups.get(element.name, ()):
        found += in_place_of(schema, member)
    return found


def content_of(schema, element):
    """Names of children, and attributes with their values, by the other reader."""
    kind = element.type
    children, attributes = set(), {}
    if not kind.is_complex() or kind.name == LANGUAGE + "anyType":
        return children, attributes
    if not kind.has_simple_content() and hasattr(kind.content, "iter_elements"):
        for child in kind.content.iter_elements():
            if isinstance(child, XsdElement) and child.max_occurs != 0:
                stands = in_place_of(schema, child.ref) if child.ref is not None else [child]
                children.update(local(each.name) for each in stands)
    for name, attribute in kind.attributes.items():
        if name is not None and attribute.use != "prohibited":
            # The other reader has a declaration of its own for xml:lang and xml:space.
            attributes[attribute_key(name)] = set() if XML in name else values_of(attribute.type)
    return children, attributes


def compare(path, answer):
    """How many global elements agree; names that several declarations share are left out."""
    schema = xmlschema.XMLSchema(path, validation="lax")
    declared = collections.Counter(
        local(each.name).lower() for each in schema.maps.iter_components(XsdElement)
        if each.ref is None and each.name)
    offered = {each["name"]: each for each in answer["elements"]}
    same, different = 0, []
    for element in schema.elements.values():
        name = local(element.name)
        if element.abstract or declared[name.lower()] != 1:
            continue
        children, attributes = content_of(schema, element)
        ours = offered.get(name, {})
        our_attributes = {
            attribute_key(each["name"]): set() if each["name"].startswith("xml:") else set(each["values"])
            for each in ours.get("attributes", ())}
        if children == set(ours.get("children", ())) and attributes == our_attributes:
            same += 1
        else:
            different.append(name)
    return same, different


def main(command, listing, words):
    slow = 0.0
    if words[:1] == ["--slow"]:
        slow, words = float(words[1]), words[2:]
    with open(listing, encoding="utf-8") as lines:
        paths = words or lines.read().split()
    failed, slowest, compared = 0, (0.0, ""), []
    print(f"{'ms':>7} {'MB':>6} {'elements':>8} {'messages':>8}  file")
    for path in paths:
        answer, elapsed, memory, errors = run(command, path)
        slowest = max(slowest, (elapsed, path))
        if answer is None:
            failed += 1
            print(f"{elapsed:7.1f} {memory:6.1f} {'-':>8} {'-':>8}  {path}  {errors}")
            continue
        if elapsed >= slow:
            print(f"{elapsed:7.1f} {memory:6.1f} {len(answer['elements']):8} {len(answer['messages']):8}  {path}")
        if path.endswith(COMPARED):
            compared.append((path, answer))
    print(f"\n{len(paths)} files, {failed} without an answer, slowest {slowest[0]:.1f} ms: {slowest[1]}\n")
    for path, answer in compared:
        same, different = compare(path, answer)
        print(f"{same} elements alike, {len(different)} not, {path} {' '.join(different[:8])}")


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2], sys.argv[3:])

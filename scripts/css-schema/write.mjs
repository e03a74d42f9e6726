// Writes the schema: one line for each thing, sorted, so that a change shows as itself.

const HEAD = `<?xml version="1.0" encoding="UTF-8"?>
<!--
  What the engine knows of style sheets. Written by scripts/update-css-schema from
  public data and the additions in scripts/css-schema/additions.mjs; change those, or
  this file at will: what stands here is what is offered.

  property  name, inherited; the media it is for, and its values:
              value name="..."   a word, written as it stands
              value type="..."   all that the type of that name offers
  type      name, editable (the list shows it as "name...", and a dialog gives the value); its values:
              value name="..."   a word
              value ref="..."    another type, whose words belong here too. A type names each
                                 type that it reaches, so that their dialogs are offered
              value type="..."   a unit for the dialog; "font" stands for the machine's fonts
  A type without words, units and dialog (number, string) notes what is written by hand.
  A word must not have the name of an editable type, nor a plain type that of a property.
-->
<css>
`;

const byName = (a, b) => {
    const [x, y] = [a.toLowerCase(), b.toLowerCase()];
    return x < y ? -1 : x > y ? 1 : 0;
};

const sorted = (names, change) => [...new Set([...names].map(change))].sort(byName);

export function writeSchema({types, properties, spell, rename}) {
    const lines = [];
    const values = (attribute, names) => names.forEach((name) => lines.push(`    <value ${attribute}="${name}"/>`));

    for (const [name, type] of [...types].sort(([a], [b]) => byName(rename(a), rename(b)))) {
        const own = rename(name);
        lines.push(`  <type name="${own}"${type.editable ? ' editable="true"' : ''}>`);
        values('type', type.units);
        values('ref', sorted([...type.types].filter((inner) => inner !== name), rename));
        values('name', sorted(type.words, spell));
        lines.push('  </type>');
    }
    for (const property of [...properties].sort((a, b) => byName(a.name, b.name))) {
        lines.push(`  <property name="${property.name}" inherited="${property.inherited}">`);
        [...property.media].sort().forEach((medium) => lines.push(`    <media name="${medium}"/>`));
        values('type', sorted(property.types, rename));
        values('name', sorted(property.words, spell));
        lines.push('  </property>');
    }
    return `${HEAD}${lines.join('\n')}\n</css>\n`;
}

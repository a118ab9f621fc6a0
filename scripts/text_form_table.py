#!/usr/bin/env python3
"""Writes the table of fields in docs/text_form.md, which is what the JSON Schema of the text form says of them.

usage: text_form_table.py [--check]     --check writes nothing and fails when the table is not that of the schema
"""

import json
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
PAGE = ROOT / "docs/text_form.md"
BEGIN = "| of | field | meaning | when absent |\n| --- | --- | --- | --- |\n"


def rows(of, properties):
    """A row for each field of one kind of object."""
    for name, field in properties.items():
        what = field["description"].replace("|", "\\|")
        yield f"| {of} | `{name}` | {what} | {field.get('x-when-absent', '')} |\n"


def table():
    """The whole table, as the page has it."""
    schema = json.loads((ROOT / "resources/schema/project.schema.json").read_text(encoding="utf-8"))
    kinds = [("project", schema)] + [(name, kind) for name, kind in schema["$defs"].items() if "properties" in kind]
    return BEGIN + "".join(row for name, kind in kinds for row in rows(name, kind["properties"]))


def main():
    page = PAGE.read_text(encoding="utf-8")
    begin = page.index(BEGIN)
    end = page.index("\n\n", begin) + 1
    new = page[:begin] + table() + page[end:]
    if "--check" not in sys.argv[1:]:
        PAGE.write_text(new, encoding="utf-8")
    elif new != page:
        sys.exit(f"{PAGE.relative_to(ROOT)}: the table is not that of the schema; run scripts/text_form_table.py")


if __name__ == "__main__":
    main()

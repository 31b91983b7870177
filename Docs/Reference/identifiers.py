# SPDX-License-Identifier: MIT
"""The page of identifiers: every string that names an interface, an export, a contract or a format."""

import re
import xml.etree.ElementTree

from contract import ShapeError, first_sentence
from markdown import code, page, table

FOLDERS = (
    "Interfaces",
    "Helpers",
    "InterfacesHelpers",
    "BasicInterfaceImplementations",
    "Platform",
    "Src",
    "Host",
    "Tool",
)
_IDENTIFIER = re.compile(r'"(com\.talvere\.[\w.]+/\d+\.\d+)"')
_CONSTANT = re.compile(r'(\w+)\[\] = "(com\.talvere\.[\w.]+/\d+\.\d+)"')


class Export:
    """One export of a configuration document."""

    def __init__(self, document, element):
        def texts(path):
            return [found.text.strip() for found in element.findall(path)]

        self.document = document
        self.id = texts("id")[0]
        self.name = texts("metadata/name")[0]
        self.contracts = texts("contract")
        self.formats = texts("metadata/serid")
        self.imports = list(zip(texts("import/property"), texts("import/contract")))


def read_exports(root):
    for folder in ("Src", "Host"):
        for path in sorted((root / folder).rglob("*.plugcfg.xml")):
            name = path.relative_to(root).as_posix()
            elements = xml.etree.ElementTree.parse(path).getroot().findall("export")
            yield from (Export(name, element) for element in elements)


def make_identifiers(root, interfaces, events):
    exports = list(read_exports(root))
    sections = [
        ("Interfaces", ("Identifier", "Interface", "Header", "What it is"), _interface_rows(interfaces)),
        ("Events belong to", ("Identifier", "Interface", "Events"), _event_rows(interfaces, events)),
        ("Exports", ("Identifier", "Name", "Contracts", "Imports", "Document"), _export_rows(exports)),
        ("Contracts", ("Identifier", "Fulfilled by", "Imported by"), _contract_rows(root, exports)),
        ("Serialisation formats", ("Identifier", "Read by the export", "Written in"), _format_rows(root, exports)),
    ]
    text = page(
        "Identifiers",
        "Interfaces, exports, contracts and formats are named by texts that are compared byte for byte.",
        *(part for title, heads, rows in sections for part in (f"## {title}", table(heads, rows))),
    )
    _check_complete(root, text)
    return text


def _interface_rows(interfaces):
    named = [interface for interface in interfaces.values() if interface.identifier]
    for found in sorted(named, key=lambda interface: interface.identifier):
        yield code(found.identifier), code(found.name), code(found.header), first_sentence(found.comment)


def _event_rows(interfaces, events):
    for name in sorted({event.interface for event in events.values()}):
        names = [code(event.name) for event in events.values() if event.interface == name]
        yield code(interfaces[name].identifier), code(name), ", ".join(names)


def _export_rows(exports):
    for export in sorted(exports, key=lambda found: found.id):
        imports = [f"{code(name)}: {code(contract)}" for name, contract in export.imports]
        contracts = ", ".join(code(contract) for contract in export.contracts)
        yield code(export.id), export.name, contracts, ", ".join(imports), code(export.document)


def _contract_rows(root, exports):
    offered = {identifier: path for identifier, path in _constants(root) if not _is_of_exports(identifier, exports)}
    names = {name for export in exports for name in export.contracts + [contract for _, contract in export.imports]}
    for name in sorted(names):
        givers = [code(export.id) for export in exports if name in export.contracts]
        if not givers:
            givers = [f"the host ({code(offered[name])})" if name in offered else "the host"]
        takers = [code(export.id) for export in exports if name in dict(export.imports).values()]
        yield code(name), ", ".join(givers), ", ".join(takers)


def _is_of_exports(identifier, exports):
    return any(identifier == export.id or identifier in export.contracts for export in exports)


def _constants(root):
    """Identifiers that sources of the host and the tool keep as constants, with the source."""
    for path in _sources(root):
        name = path.relative_to(root).as_posix()
        if name.startswith(("Host/", "Tool/")):
            yield from ((identifier, name) for _, identifier in _CONSTANT.findall(path.read_text(encoding="utf-8")))


def _format_rows(root, exports):
    texts = {path.relative_to(root).as_posix(): path.read_text(encoding="utf-8") for path in _sources(root)}
    for name, export in sorted((name, export) for export in exports for name in export.formats):
        writers = [path for path, text in texts.items() if f'"{name}"' in text]
        if not writers:
            raise ShapeError(export.document, 1, f"nothing writes the format {name}")
        yield code(name), code(export.id), ", ".join(code(path) for path in writers)


def _sources(root):
    for folder in FOLDERS:
        yield from (path for path in sorted((root / folder).rglob("*")) if path.suffix in (".h", ".cpp"))


def _check_complete(root, text):
    """Every identifier that stands in a source is on the page."""
    for path in _sources(root):
        source = path.read_text(encoding="utf-8")
        for match in _IDENTIFIER.finditer(source):
            if f"`{match.group(1)}`" not in text:
                line = source.count("\n", 0, match.start()) + 1
                raise ShapeError(path.relative_to(root).as_posix(), line, f"nothing tells what {match.group(1)} is")

#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Shows Doxygen the comments of a header the way it understands them; every line stays where it is.

Usage: doxygen_filter.py HEADER

The comment right above a declaration becomes its documentation: the lines on parameters, "Slot", "Threads:" and
"Fails:" become sections, and what is indented otherwise stays as it is laid out. Functions that follow each other
without an empty line share the comment of the first. A comment behind a declaration documents it, too. Comments that
stand for themselves outside of classes tell what the file is about. What needs no words of its own is given the
sentence that holds for all of its kind.
"""

import pathlib
import re
import sys

sys.dont_write_bytecode = True  # nothing is left behind among the sources
ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "Docs" / "Reference"))
import contract  # noqa: E402
import scopes  # noqa: E402
from comments import to_documentation  # noqa: E402
from declared import (  # noqa: E402
    base_names,
    belong_together,
    function_name,
    has_operation,
    is_function,
    is_scope,
    parameter_names,
    parameters,
)

COMMENT = re.compile(r"\s*//(?!/)")
TRAILING = re.compile(r"(\s*)//(?!/) ?(\S.*)$")

# What is said of declarations that need no words of their own; {0} is the name of the class.
STANDARD = (
    (r"static constexpr const char Id\[\]", "The identifier of this interface."),
    (r"using Interfaces =", "What the class answers to, in the order in which it is tested."),
    (r"{0}\(const {0}&\) = delete", "There is no copying."),
    (r"{0}& operator=\(const {0}&\) = delete", "There is no assigning."),
    (r"{0}\({0}&&", "Takes what other holds, which is left empty."),
    (r"{0}& operator=\({0}&&", "Takes what other holds in place of its own."),
    (r"{0}\(const {0}& \w+\)", "Shares what other holds."),
    (r"bool operator==\(const {0}&\) const = default", "Whether both say the same."),
    (r"using (reference|value_type|pointer|difference_type|iterator_category) =", "What algorithms ask of iterators."),
    (r"\S+ begin\(\)", "Where the range begins."),
    (r"\S+ end\(\)", "Where the range ends."),
    (r"{0}& operator\+\+\(\)", "Moves on by one."),
    (r"(void|{0}) operator\+\+\(int\)", "Moves on by one."),
    (r"friend .*bool operator[=!]=", "Whether a place is the end of its range, or is not."),
)
MADE_BY_OTHERS = {"protected": "Is made as a part of a class that derives from this.", "public": "Makes an empty one."}
ENDED_BY = {"protected": "Ends as a part of the class that derives from this.", "public": "Gives back what it holds."}


class Filter:
    def __init__(self, path):
        self.path = path
        self.text = path.read_text(encoding="utf-8")
        self.lines = self.text.splitlines()
        self.declarations = scopes.declarations(self.text)
        self.interfaces = {}

    def run(self):
        shared = None  # the comment that the next declaration may share
        before = None
        for declaration in self.declarations:
            if declaration.access == "private":
                continue
            if before is None or not belong_together(before, declaration):
                shared = None
            shared = self._document(declaration, shared)
            before = declaration
        self._turn_macros()
        self._describe_file()
        return "\n".join(self.lines) + "\n"

    def _document(self, declaration, shared):
        """Documents one declaration; gives the comment that the next one may share."""
        if declaration.text.strip().startswith(("namespace", "[[gnu::weak]]", "static_assert")):
            return None
        comment = self._take_comment(declaration)
        trailing = self._turn_trailing(declaration)
        if comment or trailing:
            return comment
        if shared and not self._inherited(declaration):
            self._put_before(declaration, " ".join(to_documentation(shared, parameter_names(declaration))))
            return shared
        sentence = self._standard_sentence(declaration)
        if sentence:
            self._put_before(declaration, sentence)
        return None

    def _take_comment(self, declaration):
        """Turns the comment right above into documentation and gives it as it was."""
        first = declaration.first_line - 1
        start = first
        while start > 1 and COMMENT.match(self.lines[start - 1]):
            start -= 1
        comment = contract.comment_above(self.lines, declaration.first_line) if start < first else []
        if not comment:
            return []
        shown = to_documentation(comment, parameter_names(declaration))
        if comment[0].startswith("Fails: ") and self._inherited(declaration):
            shown[0] = f"{self._inherited(declaration)} {shown[0]}"
        for number, line in enumerate(shown, start):
            self.lines[number] = f"/// {line}"
        return comment

    def _turn_trailing(self, declaration):
        last = declaration.last_line - 1
        if is_scope(declaration) or (is_function(declaration) and "}" in self.lines[last]):
            return False
        code = scopes.cpp_text.code_only(self.lines[last]).rstrip()
        match = TRAILING.fullmatch(self.lines[last][len(code) :])
        if match is None:
            return False
        (shown,) = to_documentation([match.group(2)], [])
        self.lines[last] = f"{self.lines[last][:len(code)]}{match.group(1)}///< {shown}"
        return True

    def _put_before(self, declaration, sentence):
        line = self.lines[declaration.first_line - 1]
        indent = line[: len(line) - len(line.lstrip())]
        self.lines[declaration.first_line - 1] = f"{indent}/** {sentence} */ {line.lstrip()}"

    def _standard_sentence(self, declaration):
        plain = re.sub(r"^(explicit|virtual) ", "", " ".join(declaration.text.split()))
        name = declaration.scope.name
        for shape, sentence in STANDARD:
            if re.match(shape.format(re.escape(name)), plain):
                return sentence
        if re.match(rf"{name}\(\).* = default", plain):
            return MADE_BY_OTHERS[declaration.access]
        if plain.startswith(f"~{name}()"):
            return ENDED_BY[declaration.access]
        return self._inherited(declaration)

    def _inherited(self, declaration):
        """The way to the documentation of the operation that a function overrides; empty when it overrides none."""
        if not re.search(r"\b(override|final)\b", declaration.text) or not is_function(declaration):
            return ""
        name = function_name(declaration)
        types = ", ".join(kind for kind, _ in parameters(declaration))
        named = [face for face in self._faces() if has_operation(face, name, types)]
        in_bases = [face for face in named if re.search(rf"\b{face.name}\b", self._heads())]
        found = in_bases or [face for face in named if face.name in ("IObject", "IObjectBase")]
        return f"@copydoc {found[0].namespace}::{found[0].name}::{name}({types})" if found else ""

    def _faces(self):
        if not self.interfaces:
            self.interfaces = contract.read_contract(ROOT)
        return self.interfaces.values()

    def _heads(self):
        """The heads of all classes here, with the bases of the interfaces that they name."""
        heads = " ".join(block.head for block in scopes.blocks(self.text) if block.kind == "class")
        for face in self._faces():
            if re.search(rf"\b{face.name}\b", heads):
                heads += " " + " ".join(base_names(self.interfaces, face))
        return heads

    def _turn_macros(self):
        """The comments above macros, also when the systems have one each."""
        for number, line in enumerate(self.lines):
            if re.match(r"#(define|ifdef) ", line):
                start = number - len(contract.comment_above(self.lines, number + 1))
                self.lines[start:number] = [COMMENT.sub("///", above) for above in self.lines[start:number]]

    def _describe_file(self):
        name = self.path.resolve().relative_to(ROOT).as_posix()
        self.lines[0] = f"/// @file \"{name}\" Include it as \"{name}\"."
        for start, end in self._free_comments():
            shown = to_documentation([line.strip()[2:].removeprefix(" ") for line in self.lines[start:end]], [])
            self.lines[start:end] = [f"/// {line}" for line in shown]
            self.lines[start] = f"/// @file \"{name}\" {shown[0]}"

    def _free_comments(self):
        """Comments outside of classes that no declaration follows, or only a namespace."""
        start = None
        for number, line in enumerate(self.lines[1:] + [""], 1):
            if COMMENT.match(line):
                start = number if start is None else start
                continue
            if start is not None and self._is_free(start, line):
                yield start, number
            start = None

    def _is_free(self, start, behind):
        position = sum(len(line) + 1 for line in self.text.splitlines()[:start]) + 1
        around = scopes.blocks_around(self.text, position)
        is_followed = behind.strip() and not behind.startswith("namespace")
        return not is_followed and all(block.kind == "namespace" for block in around)


if __name__ == "__main__":
    sys.stdout.write(Filter(pathlib.Path(sys.argv[1])).run())

# SPDX-License-Identifier: MIT
"""The comments of the headers as Doxygen reads them, line for line."""

import re

_PARAMETER = re.compile(r"  +(\w+(?:, \w+)*)  +(\S.*)")
_SPECIAL = re.compile(r"[\\@&<>#%$*|~`]")


def to_documentation(comment, parameters):
    """As many lines as the comment has. Commands that begin a section are aliases, so that they may stand anywhere."""
    lines = _Lines(comment, parameters)
    return lines.convert()


class _Lines:
    def __init__(self, comment, parameters):
        self.comment = comment
        self.parameters = set(parameters)
        self.shown = []
        self.column = None  # where the text on the current parameter stands
        self.laid_out = None  # what ends the block of laid out lines that is open

    def convert(self):
        slot = re.match(r"Slot (\d+)\. ", self.comment[0])
        lines = [self.comment[0][slot.end() :]] + self.comment[1:] if slot else self.comment
        for line in lines:
            self.shown.append(self._convert_line(line))
        self._end_layout()
        if slot:
            self.shown[-1] += f" @slot{{{slot.group(1)}}}"
        return self.shown

    def _convert_line(self, line):
        if self.laid_out is None:
            parameter = self._parameter(line)
            if parameter:
                return parameter
            if self.column is not None and line.startswith(" " * self.column):
                return escape(line.strip())
        self.column = None
        if line.startswith("  "):
            return self._layout(line)
        self._end_layout()
        return _sections(line)

    def _parameter(self, line):
        match = _PARAMETER.fullmatch(line)
        if match is None or not set(match.group(1).split(", ")) <= self.parameters:
            return ""
        self.column = match.start(2)
        direction = "[out]" if match.group(1) == "out" else ""
        return f"@param{direction} {match.group(1).replace(', ', ',')} {escape(match.group(2))}"

    def _layout(self, line):
        """Lines of an enumeration become a list; the others stay as they are."""
        is_item = line.rstrip().endswith((";", "."))
        if self.laid_out is None:
            self.laid_out = "" if is_item else " @endverbatim"
            return f"- {escape(line.strip())}" if is_item else f"@verbatim {line}"
        return f"- {escape(line.strip())}" if self.laid_out == "" else line

    def _end_layout(self):
        """A block of laid out lines ends with its last line that is not empty."""
        if self.laid_out:
            self.shown[-1] += self.laid_out
        self.laid_out = None


def _sections(line):
    """A line of text, in which the words on threads and failures open sections."""
    match = re.match(r"(Threads: )?(.*?)(?:(?:^|(?<=[.;]) )Fails: (.*))?$", line)
    threads, text, fails = match.groups()
    shown = ("@threads " if threads else "") + escape(text)
    return shown + (f" @fails {escape(fails)}" if fails is not None else "")


def escape(text):
    """Text in which no character means anything to Doxygen."""
    return _SPECIAL.sub(r"\\\g<0>", text)

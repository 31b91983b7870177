# SPDX-License-Identifier: MIT
"""Pieces of Markdown pages that read well as they are and as HTML."""

import html
import re

# What stands in a page to the letter, and characters that mean something outside of that.
_LITERAL = re.compile(r"(```.*?```|``.*?``(?!`)|`[^`]*`|<code>.*?</code>)|[^`<]+|<", re.DOTALL)
_SPECIAL = re.compile(r"\\(?!\|)|[<@#%](?=\w)")


def cell(text):
    """Text that stays in its cell of a table, whatever is in it."""
    return " ".join(str(text).split()).replace("|", "\\|")


def code(text):
    """Text to the letter; in a table, too."""
    if "|" in text:
        return f"<code>{html.escape(text, quote=False).replace('|', '&#124;')}</code>"
    mark = "``" if re.search("[`']", text) else "`"
    return f"{mark}{text}{mark}" if text else ""


def table(heads, rows):
    lines = ["| " + " | ".join(heads) + " |", "|" + "---|" * len(heads)]
    lines += ["| " + " | ".join(cell(value) for value in row) + " |" for row in rows]
    return "\n".join(lines) + "\n"


def page(title, *parts):
    text = "\n".join([f"# {title}\n", *(part.rstrip("\n") + "\n" for part in parts)])
    return _LITERAL.sub(lambda match: match.group(1) or _SPECIAL.sub(r"\\\g<0>", match.group()), text)

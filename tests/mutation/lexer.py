"""Cuts C++ source into tokens, as far as mutation needs it.

Comments, preprocessor lines and white space are left out. The sources are formatted by machine,
and that is made use of: an operator with white space on both sides is a binary one, while `<` of
a template, `*` of a pointer and `&` of a reference touch a neighbour.
"""

import re
from dataclasses import dataclass

_TOKEN = re.compile(
    r"""(?P<skip>\s+|//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:[^\n\\]|\\.)*)
      |(?P<string>"(?:\\.|[^"\\])*")
      |(?P<char>'(?:\\.|[^'\\])*')
      |(?P<number>\.?\d(?:[eE][+-]|[\w.'])*)
      |(?P<name>[A-Za-z_]\w*)
      |(?P<mark><=>|->|\+\+|--|<=|>=|==|!=|&&|\|\||[-+*/%]=|::|.)""",
    re.VERBOSE | re.MULTILINE | re.DOTALL,
)
_CLOSING = {")": "(", "]": "[", "}": "{"}


@dataclass(frozen=True)
class Token:
    """One token: its kind (string, char, number, name or mark), text and place in the file."""

    kind: str
    text: str
    start: int
    end: int


class Source:
    """The tokens of one file with their brackets matched."""

    def __init__(self, text):
        self.text = text
        self.tokens = [
            Token(m.lastgroup, m.group(), m.start(), m.end())
            for m in _TOKEN.finditer(text)
            if m.lastgroup != "skip"
        ]
        self.match = {}  # index of a bracket -> index of its partner
        self.inside = []  # per token the index of the bracket around it, -1 at file level
        self._match_brackets()

    def _match_brackets(self):
        open_brackets = [-1]
        for i, token in enumerate(self.tokens):
            if token.kind == "mark" and token.text in _CLOSING:
                partner = open_brackets.pop()
                assert self.tokens[partner].text == _CLOSING[token.text], token
                self.match[i] = partner
                self.match[partner] = i
            self.inside.append(open_brackets[-1])
            if token.kind == "mark" and token.text in "([{":
                open_brackets.append(i)

    def is_text(self, i, *texts):
        """Does token i exist and read like one of the texts?"""
        return 0 <= i < len(self.tokens) and self.tokens[i].text in texts

    def is_binary(self, i):
        """Does the operator at token i stand between two operands?"""
        token = self.tokens[i]
        return self.text[token.start - 1].isspace() and self.text[token.end].isspace()

    def is_unary(self, i):
        """Is the operator at token i attached to the operand behind it, and to none before it?"""
        token = self.tokens[i]
        before = self.text[token.start - 1]
        return (before.isspace() or before in "([{!") and not self.text[token.end].isspace()

    def slice(self, first, last):
        """The text from token first to token last, both included."""
        return self.text[self.tokens[first].start : self.tokens[last].end]

    def operand_after(self, i):
        """Index of the last token of the operand that begins at token i; None if there is none."""
        while self.is_text(i, "-", "!", "*", "&", "++", "--"):
            i += 1
        if i >= len(self.tokens):
            return None
        if self.is_text(i, "(", "{"):
            i = self.match[i]
        elif self.tokens[i].kind == "mark":
            return None
        while True:
            if self.is_text(i + 1, "(", "[") or (
                self.is_text(i + 1, "{") and self.tokens[i].end == self.tokens[i + 1].start
            ):
                i = self.match[i + 1]
            elif self.is_text(i + 1, ".", "->", "::"):
                i += 2
            elif self.is_text(i + 1, "<") and not self.is_binary(i + 1):
                i += 1
                while not self.is_text(i, ">"):
                    i += 1
            else:
                return i

    def operand_before(self, i):
        """Index of the first token of the operand that ends at token i; None if there is none."""
        while True:
            if self.is_text(i, ")", "]"):
                i = self.match[i]
                if self.tokens[i - 1].kind == "name" and not self.is_text(
                    i - 1, "if", "for", "while", "return", "switch"
                ):
                    i -= 1
                elif self.is_text(i - 1, ")", "]"):
                    i -= 1
                    continue
                elif self.is_text(i - 1, ">"):
                    while not self.is_text(i, "<"):
                        i -= 1
                    i -= 1
                else:
                    break
            elif self.tokens[i].kind == "mark":
                return None
            if not self.is_text(i - 1, ".", "->", "::"):
                break
            i -= 2
        while self.is_text(i - 1, "-", "!", "*", "&") and self.is_unary(i - 1):
            i -= 1
        return i

    def stretch(self, i, borders):
        """First and last token around token i up to the borders or the brackets around."""
        first = self.match[i] if self.is_text(i, ")", "]", "}") else i
        while first > 0 and not self._ends_stretch(first - 1, borders, i):
            first -= 1
            if self.is_text(first, ")", "]", "}"):
                first = self.match[first]
        last = self.match[i] if self.is_text(i, "(", "[", "{") else i
        while not self._ends_stretch(last + 1, borders, i):
            last += 1
            if self.is_text(last, "(", "[", "{"):
                last = self.match[last]
        return first, last

    def _ends_stretch(self, i, borders, of):
        return self.tokens[i].text in borders or i in (
            self.inside[of],
            self.match.get(self.inside[of]),
        )

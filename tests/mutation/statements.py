"""Mutations of whole statements: each yields (operation, start, end, new text)."""

import re

# A statement that begins with one of these is no call and no assignment.
_NOT_PLAIN = set(
    """auto bool break case char class const constexpr continue default double else enum explicit
    float for friend if inline int namespace private public return static struct switch template
    using virtual void while""".split()
)
_ASSIGNING = {"=", "+=", "-=", "*=", "/="}
_ADDS_UP = re.compile(r"[-+]=|\b(?:add\w*|append|subtract\w*|visit)\(|\bGradVarb_")
_TRACE = re.compile(r"(?:\w+::)*trace\w*\(")
_LOOP = re.compile(
    r"\((?P<type>[\w:]+) (?P<name>\w+) = (?P<first>[^;]+); "
    r"(?P=name) (?P<relation><=?) (?P<last>[^;]+); \+\+(?P=name)\)$"
)


def plain_statements(source):
    """Calls and assignments as (first token, token of the semicolon, is it a call)."""
    for i, token in enumerate(source.tokens):
        begins = source.is_text(i - 1, ";", "{", "}", ")", "else", ":") or i == 0
        around = source.inside[i]
        if not begins or (around >= 0 and not source.is_text(around, "{")):
            continue
        if token.kind != "name" and token.text not in ("++", "--", "*"):
            continue
        if token.text in _NOT_PLAIN:
            continue
        begin = i + 1 if token.text == "delete" else i
        if source.is_text(begin, "["):
            begin += 2
        last = source.operand_after(begin)
        if last is None:
            continue
        end = last + 1
        is_call = source.is_text(end, ";") and token.text not in ("++", "--")
        if source.is_text(end, *_ASSIGNING):
            while not source.is_text(end, ";"):
                end = source.match[end] + 1 if source.is_text(end, "(", "[", "{") else end + 1
        if source.is_text(end, ";"):
            yield i, end, is_call


def deletions(source):
    """A call or an assignment is left out, or a continue, or a return without a value."""
    for first, semicolon, _ in plain_statements(source):
        yield "deletion", source.tokens[first].start, source.tokens[semicolon].start, ""
    for i, token in enumerate(source.tokens):
        if token.text in ("continue", "break", "return") and source.is_text(i + 1, ";"):
            yield "deletion", token.start, token.end, ""
            if token.text == "continue":
                yield "jump", token.start, token.end, "break"


def exchanges(source):
    """Two calls that follow each other change places; not a line of the trace with a step, because
    the trace is a text of its own."""
    calls = [(first, semicolon) for first, semicolon, is_call in plain_statements(source) if is_call]
    for (first, end), (second, last) in zip(calls, calls[1:]):
        if second != end + 1 or source.is_text(first - 1, ")", "else"):
            continue
        a, b = source.slice(first, end), source.slice(second, last)
        if a == b or bool(_TRACE.match(a)) != bool(_TRACE.match(b)):
            continue
        between = source.text[source.tokens[end].end : source.tokens[second].start]
        yield "order", source.tokens[first].start, source.tokens[last].end, b + between + a


def conditions(source):
    """if (c) -> if (true), -> if (false); while (c) -> while (false)."""
    for i, token in enumerate(source.tokens):
        if token.text not in ("if", "while") or not source.is_text(i + 1, "("):
            continue
        start, end = source.tokens[i + 1].end, source.tokens[source.match[i + 1]].start
        yield "condition", start, end, "false"
        if token.text == "if":
            yield "condition", start, end, "true"


def loops(source):
    """A counting loop runs backwards, where reals are added up or something is listed in it; in
    the others passes are counted or have their own elements, and the order means nothing."""
    for i, token in enumerate(source.tokens):
        if token.text != "for" or not source.is_text(i + 1, "("):
            continue
        last = source.match[i + 1]
        head = _LOOP.match(" ".join(source.slice(i + 1, last).split()))
        end = source.match[last + 1] if source.is_text(last + 1, "{") else last + 1
        while not source.is_text(end, "}", ";"):
            end += 1
        if not head or not _ADDS_UP.search(source.slice(last + 1, end)):
            continue
        h = head.groupdict()
        extra = " + 1" if h["relation"] == "<=" else ""
        start = f"{h['type']} {h['name']} = {h['last']}{extra}"
        yield (
            "order",
            source.tokens[i + 1].start,
            source.tokens[last].end,
            f"({start}; {h['name']}-- > {h['first']};)",
        )


ALL = (deletions, exchanges, conditions, loops)

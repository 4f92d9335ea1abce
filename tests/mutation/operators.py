"""Mutations of operators, constants and operands: each yields (operation, start, end, new text)."""

import math
import re
import struct

RELATIONAL = {
    "<": ("<=", ">"),
    "<=": ("<", "=="),
    ">": (">=", "<"),
    ">=": (">", "=="),
    "==": ("!=", "<=", ">="),
    "!=": ("==", "<", ">"),
}
OPPOSITE = {"<": ">=", "<=": ">", ">": "<=", ">=": "<"}
ARITHMETIC = {"+": "-", "-": "+", "*": "/", "/": "*"}
ASSIGNING = {"+=": "-=", "-=": "+=", "*=": "/=", "++": "--"}
NAMES = {"true": "false", "false": "true", "min": "max", "max": "min"}

# Functions whose two arguments can change places without any effect, by their very meaning.
SYMMETRIC = set(
    """dot holds isRejected max min planeCounts pointBothAt pointTowardsEachOther shareAllSigns
    takesPart vectorAngle""".split()
)
_TYPES = {"const", "char", "double", "float", "int", "void"}

_BEYOND_CONDITION = {"&&", "||", "?", ":", ",", ";", "=", "return"}
_BEYOND_OPERAND = _BEYOND_CONDITION | {"==", "!="}


def relations(source):
    """a < b -> a <= b and the like; -> !(a >= b), which differs where one is not a number."""
    for i, token in enumerate(source.tokens):
        if token.text not in RELATIONAL or not source.is_binary(i):
            continue
        for other in RELATIONAL[token.text]:
            if _is_clamp(source, i) and other in (token.text + "=", token.text[0]):
                continue
            yield "relation", token.start, token.end, other
        if token.text in OPPOSITE and not _in_loop_head(source, i):
            first, last = source.stretch(i, _BEYOND_OPERAND)
            left = source.slice(first, i - 1)
            right = source.slice(i + 1, last)
            yield (
                "unordered",
                source.tokens[first].start,
                source.tokens[last].end,
                f"!({left} {OPPOSITE[token.text]} {right})",
            )


def _is_clamp(source, i):
    """if (a < b) a = b, or b = a: where they are equal, it does not matter."""
    bracket = source.inside[i]
    if bracket < 0 or not source.is_text(bracket - 1, "if"):
        return False
    close = source.match[bracket]
    left, right = source.slice(bracket + 1, i - 1), source.slice(i + 1, close - 1)
    last = source.operand_after(close + 1)
    if last is None or not source.is_text(last + 1, "="):
        return False
    target, value = source.slice(close + 1, last), source.slice(*_up_to_semicolon(source, last + 2))
    return {target, value} == {left, right}


def _up_to_semicolon(source, first):
    last = first
    while not source.is_text(last + 1, ";"):
        last += 1
    return first, last


def _in_loop_head(source, i):
    return source.inside[i] > 0 and source.is_text(source.inside[i] - 1, "for")


def arithmetic(source):
    """a + b -> a - b, x += y -> x -= y, ++x -> --x outside of loop heads, -x -> x."""
    for i, token in enumerate(source.tokens):
        if token.kind != "mark":
            continue
        if token.text in ARITHMETIC and source.is_binary(i):
            yield "arithmetic", token.start, token.end, ARITHMETIC[token.text]
        elif token.text in ASSIGNING and not _in_loop_head(source, i):
            yield "arithmetic", token.start, token.end, ASSIGNING[token.text]
        elif token.text == "-" and source.is_unary(i):
            yield "sign", token.start, token.end, ""


def logic(source):
    """a && b -> a || b, -> a, -> b; !a -> a."""
    for i, token in enumerate(source.tokens):
        if token.text in ("&&", "||") and source.is_binary(i):
            yield "logic", token.start, token.end, "||" if token.text == "&&" else "&&"
            first, last = source.stretch(i, _BEYOND_CONDITION - {token.text})
            left, _ = source.stretch(i - 1, _BEYOND_CONDITION) if i > first else (i, i)
            _, right = source.stretch(i + 1, _BEYOND_CONDITION) if i < last else (i, i)
            end = source.tokens[right].end
            yield "operand dropped", source.tokens[i - 1].end, end, ""
            yield "operand dropped", source.tokens[left].start, source.tokens[i + 1].start, ""
        elif token.text == "!" and source.is_unary(i):
            yield "negation", token.start, token.end, ""


def constants(source):
    """Whole numbers one up and down; reals to the next value up and down, 0.0 to 1.0 and -1.0;
    true <-> false, min <-> max; another text."""
    for token in source.tokens:
        if token.kind == "number":
            for other in _other_numbers(token.text):
                yield "constant", token.start, token.end, other
        elif token.kind == "name" and token.text in NAMES:
            yield "constant", token.start, token.end, NAMES[token.text]
        elif token.kind == "string":
            yield "text", token.start, token.end, '"~' + token.text[1:]
        elif token.kind == "char":
            yield "text", token.start, token.end, "'~'"


def _other_numbers(text):
    if text.isdigit():
        return str(int(text) + 1), str(int(text) - 1)
    if text.endswith("F"):
        bits = struct.unpack("<I", struct.pack("<f", float(text[:-1])))[0]
        neighbours = (struct.unpack("<f", struct.pack("<I", bits + step))[0] for step in (1, -1))
        return tuple(f"{value!r}F" for value in neighbours)
    value = float(text)
    if value == 0.0:
        return "1.0", "-1.0"
    return repr(math.nextafter(value, math.inf)), repr(math.nextafter(value, -math.inf))


def operands(source):
    """a - b -> b - a, a / b -> b / a, c ? a : b -> c ? b : a."""
    for i, token in enumerate(source.tokens):
        if token.text in ("-", "/") and source.is_binary(i):
            if token.text == "-" and source.is_text(source.inside[i] - 1, "length"):
                continue  # as long either way
            first, last = source.operand_before(i - 1), source.operand_after(i + 1)
            if first is not None and last is not None:
                yield from _exchanged("operands", source, (first, i - 1), (i + 1, last))
        elif token.text == "?":
            _, colon = source.stretch(i, {":", ";"})
            _, last = source.stretch(colon + 2, {":", ";", ","})
            yield from _exchanged("operands", source, (i + 1, colon), (colon + 2, last))


def _exchanged(operation, source, left, right):
    a, b = source.slice(*left), source.slice(*right)
    if a == b:
        return
    start, end = source.tokens[left[0]].start, source.tokens[right[1]].end
    between = source.text[source.tokens[left[1]].end : source.tokens[right[0]].start]
    yield operation, start, end, b + between + a


# Members x, y, z, and fields like m_pGradX, m_pWallFaceXc and m_pWallFaceSx.
_COMPONENT = re.compile(r"^(m_p\w+(?:S|Grad2?|Node|Work1|Face|))([xyzXYZ])(c?)$|^()([xyz])()$")


def components(source):
    """a.x -> a.y, a.y -> a.z, a.z -> a.x; the same for arrays of components."""
    following = dict(zip("xyzXYZ", "yzxYZX"))
    for i, token in enumerate(source.tokens):
        match = _COMPONENT.match(token.text) if token.kind == "name" else None
        if not match:
            continue
        prefix, letter, suffix = match.groups()[:3] if match[2] else match.groups()[3:]
        if prefix or source.is_text(i - 1, ".", "->"):
            yield "component", token.start, token.end, prefix + following[letter] + suffix


def bracketing(source):
    """a + b + c -> a + (b + c), (a + b) + c -> a + (b + c), the same for products,
    a / b * c -> a / (b / c)."""
    for i, token in enumerate(source.tokens):
        if token.text not in ("+", "*", "/") or not source.is_binary(i):
            continue
        beyond = _BEYOND_OPERAND | set(RELATIONAL) | {"+=", "-=", "*="}
        term = beyond | {"+", "-"} if token.text == "+" else beyond | {"+", "-", "*", "/"}
        first, _ = source.stretch(i - 1, term)
        middle_first, middle = source.stretch(i + 1, term)
        if not source.is_text(middle + 1, token.text, "*" if token.text == "/" else token.text):
            yield from _opened(source, i, first, term)
            continue
        if not source.is_binary(middle + 1):
            continue
        _, last = source.stretch(middle + 2, term)
        follow = "/" if token.text == "/" else token.text
        new = f"({source.slice(middle_first, middle)} {follow} {source.slice(middle + 2, last)})"
        yield "bracketing", source.tokens[middle_first].start, source.tokens[last].end, new


def _opened(source, i, first, term):
    """(a + b) + c -> a + (b + c), where the left operand is a bracket around a sum."""
    if not source.is_text(first, "(") or source.match[first] != i - 1:
        return
    operator = source.tokens[i].text
    inner = [
        k
        for k in range(first + 1, i - 1)
        if source.inside[k] == first and source.is_text(k, operator) and source.is_binary(k)
    ]
    if not inner or operator == "/":
        return
    split = inner[-1]
    _, last = source.stretch(i + 1, term)
    left = source.slice(first + 1, split - 1)
    right = f"({source.slice(split + 1, i - 2)} {operator} {source.slice(i + 1, last)})"
    yield (
        "bracketing",
        source.tokens[first].start,
        source.tokens[last].end,
        f"{left} {operator} {right}",
    )


def arguments(source):
    """f(a, b) -> f(b, a) and {a, b} -> {b, a} for neighbours that look alike."""
    for i, token in enumerate(source.tokens):
        if token.text not in ("(", "{") or i == 0:
            continue
        before = source.tokens[i - 1]
        is_call = before.kind == "name" and before.end == token.start
        is_list = token.text == "{" and before.text in ("return", "(", ",", "=")
        if not (is_call or is_list) or before.text in SYMMETRIC:
            continue
        parts = _arguments_of(source, i)
        for left, right in zip(parts, parts[1:]):
            if _shape(source, *left) == _shape(source, *right):
                yield from _exchanged("arguments", source, left, right)


def _shape(source, first, last):
    """The kinds of the tokens, marks as they are. Parameters and addresses look like nothing else:
    those are no arguments, and the order of these is that in which memory is asked for."""
    tokens = source.tokens[first : last + 1]
    if any(a.kind == b.kind == "name" for a, b in zip(tokens, tokens[1:])):
        return object()
    if tokens[0].text == "&" or any(t.text in _TYPES for t in tokens):
        return object()
    return [t.text if t.kind == "mark" else t.kind for t in tokens]


def _arguments_of(source, bracket):
    end = source.match[bracket]
    members = [k for k in range(bracket + 1, end) if source.inside[k] == bracket]
    if any(source.is_text(k, ";") for k in members):
        return []
    commas = [bracket] + [k for k in members if source.is_text(k, ",")] + [end]
    return [(a + 1, b - 1) for a, b in zip(commas, commas[1:]) if a + 1 <= b - 1]


ALL = (relations, arithmetic, logic, constants, operands, components, bracketing, arguments)

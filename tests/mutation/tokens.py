"""C++ sources as tokens: as much of the language as the changes need, in the form of clang-format."""

import re

PATTERN = re.compile(r"""
    (?P<blank>\s+|//[^\n]*|/\*.*?\*/)
  | (?P<directive>(?<![^\n])\#[^\n]*(?:\\\n[^\n]*)*)
  | (?P<text>"(?:\\.|[^"\\\n])*"(?:\s*"(?:\\.|[^"\\\n])*")*)
  | (?P<letter>'(?:\\.|[^'\\\n])+')
  | (?P<number>\.?\d(?:'[\dA-Fa-f]|[eE][+-]|[\w.])*)
  | (?P<word>[A-Za-z_]\w*)
  | (?P<sign><=>|<<=|>>=|\.\.\.|->\*|::|->|\+\+|--|&&|\|\||<<|[-+*/%&|^<>=!]=|.)
""", re.VERBOSE | re.DOTALL)

CLOSING = {")": "(", "]": "[", "}": "{"}
SCOPES = {"namespace", "struct", "class", "union", "enum", "extern"}


class Token:
    """A token, with what stands around it."""

    def __init__(self, kind, text, begin, line):
        self.kind, self.text, self.begin, self.end, self.line = kind, text, begin, begin + len(text), line
        self.partner = None  # place of the other bracket
        self.brace = None  # of a brace: "code", "scope", or "values"
        self.angle = False  # a bracket of a template


def tokens_of(source):
    """All tokens but blanks, comments and directives; brackets know their partners."""
    tokens, line, position = [], 1, 0
    while position < len(source):
        match = PATTERN.match(source, position)
        if match.lastgroup not in ("blank", "directive"):
            text = match.group()
            pieces = [">", ">"] if text == ">>" else [text]
            for number, piece in enumerate(pieces):
                tokens.append(Token(match.lastgroup, piece, position + number, line))
        line += match.group().count("\n")
        position = match.end()
    pair_brackets(tokens)
    return tokens


def spaced(tokens, place):
    """Blanks on both sides, as around an operator with two operands."""
    token = tokens[place]
    return (0 < place < len(tokens) - 1 and tokens[place - 1].end < token.begin
            and token.end < tokens[place + 1].begin)


def pair_brackets(tokens):
    """Finds partners, templates' angles, and what each brace holds."""
    stack = []
    for place, token in enumerate(tokens):
        if token.kind != "sign":
            continue
        if token.text == "<" and not spaced(tokens, place) and tokens[place - 1].text != "operator":
            stack.append(place)
        elif token.text == ">" and stack and tokens[stack[-1]].text == "<":
            join(tokens, stack.pop(), place)
            token.angle = tokens[token.partner].angle = True
        elif token.text in ("(", "[", "{"):
            if token.text == "{":
                token.brace = brace_kind(tokens, place)
            stack.append(place)
        elif token.text in CLOSING:
            while stack and tokens[stack[-1]].text == "<":
                stack.pop()
            join(tokens, stack.pop(), place)


def join(tokens, opening, closing):
    """Two brackets are partners."""
    tokens[opening].partner, tokens[closing].partner = closing, opening
    tokens[closing].brace = tokens[opening].brace


def brace_kind(tokens, place):
    """What an opening brace begins."""
    before = tokens[place - 1].text if place else ""
    first = place - 1
    while first >= 0 and (tokens[first].text not in (";", "{", "}")
                          or (tokens[first].text == "}" and tokens[first].brace == "values")):
        if tokens[first].text in (")", "}", "]") or tokens[first].angle:
            first = min(first, tokens[first].partner if tokens[first].partner is not None else first)
        first -= 1
    head = [token.text for token in tokens[first + 1:place]]
    if head and head[0] == "template":
        head = head[tokens[first + 2].partner - first:]
    while head and head[0] in ("inline", "typedef", "static"):
        head = head[1:]
    if head and head[0] in SCOPES and before not in (")", "=", "const"):
        return "scope"
    if before in (")", "]", "const", "noexcept", "else", "do", "try", "mutable", "override", ";", ""):
        return "code"
    if before in ("{", "}"):
        return "code" if first == place - 1 and tokens[first].brace == "code" else "values"
    if "->" in head and ")" in head:
        tail = head[len(head) - 1 - head[::-1].index(")"):]
        if len(tail) > 1 and tail[1] == "->":
            return "code"
    return "values"

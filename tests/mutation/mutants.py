"""The changes of a source. Each one stands beside the original, behind a question for its number."""

from operands import PRECEDENCE, STOPS, Tokens
from tokens import spaced

PREFIX = "tyxo_mutation::"
# The function of mutation.h, and what it makes of the operator.
BINARY = {"<": ("less", ("<=", ">=")), "<=": ("less_equal", ("<", ">")),
          ">": ("greater", (">=", "<=")), ">=": ("greater_equal", (">", "<")),
          "==": ("equal", ("!=",)), "!=": ("unequal", ("==",)),
          "+": ("plus", ("- (a text: left side only)",)), "-": ("minus", ("+",)),
          "*": ("times", ("/",)), "/": ("divided", ("*",)), "%": ("modulo", ("/",)), "&": ("bits_of", ("|",))}
LOGICAL = {"&&": ("both", "||"), "||": ("either", "&&")}
NO_STATEMENT = {"if", "for", "while", "switch", "return", "case", "default", "using", "static", "const",
                "constexpr", "auto", "else", "do", "try", "catch", "throw", "struct", "class", "enum",
                "template", "friend", "public", "private", "protected", "explicit", "namespace",
                "static_assert", "operator", "typedef", "requires", "inline", "extern", "virtual", "delete"}
ASSIGNMENTS = STOPS - {"(", "[", "{", ",", ";", "?", ":"}


class Mutant:
    """One change."""

    def __init__(self, place, token, what, table):
        self.place, self.line, self.what, self.table = place, token.line, what, table
        self.number = self.file = None

    def __str__(self):
        return f"{self.file}:{self.line}: {self.what}"


class Source(Tokens):
    """A source, its mutants, and the copy with all of them in it."""

    def __init__(self, text):
        super().__init__(text)
        self.sites = []  # mutants, and the pieces that put them into the copy
        self.relaxed = []  # what is constexpr no longer: first and last line, pieces
        self.relax()
        for place, token in enumerate(self.tokens):
            if not self.skipped[place]:
                self.visit(place, token)

    def mutants(self):
        """All of them, in their order."""
        return [mutant for mutants, _ in self.sites for mutant in mutants]

    def relax(self):
        """Constants become objects that are made at the start, so that mutants can change them."""
        for place, token in enumerate(self.tokens):
            if token.text != "constexpr" or self.skipped[place]:
                continue
            end, function = place, False
            while self.tokens[end].text != ";":
                if self.tokens[end].text == "{" and self.tokens[end].brace == "code":
                    function = True
                    end = self.tokens[end].partner
                    break
                end = self.tokens[end].partner if self.tokens[end].text in ("(", "{", "[") else end + 1
                end += 1 if self.tokens[end].text in (")", "}", "]") else 0
            inside = self.scope_of(place)
            if function:
                word = "inline"
            elif (inside is not None and self.tokens[inside].brace == "scope"
                  and self.tokens[place - 1].text == "static"):
                word = "inline const"
            else:
                word = "const"
            self.relaxed.append((place, end, (token.begin, token.end, word)))

    # Mutants

    def add(self, place, whats, pieces, table=False):
        """Mutants at a place; `pieces` are (position, order, text), or (begin, end, text) that replace."""
        self.sites.append(([Mutant(place, self.tokens[place], what, table) for what in whats], pieces))

    def wrap(self, place, function, first, last, whats, operator=None, glue=", ", end=")"):
        """A call of `function` around the tokens."""
        begin, stop = self.tokens[first].begin, self.tokens[last].end
        width = stop - begin
        pieces = [("open", begin, -width, function), ("close", stop, width, end)]
        if operator is not None:
            pieces.append(("replace", self.tokens[operator].begin, self.tokens[operator].end, glue))
        self.add(place, whats, pieces)

    def visit(self, place, token):
        """All mutants that begin with this token."""
        if token.kind in ("number", "letter", "text"):
            self.literal(place, token)
        elif token.text in ("true", "false"):
            self.replace(place, f"{PREFIX}flip<@>({token.text})", [f"{token.text} -> {opposite(token.text)}"])
        elif token.kind == "sign" and spaced(self.tokens, place) and not token.angle:
            self.binary(place, token)
        elif token.text == "!" and not spaced(self.tokens, place):
            last = self.chain_end(place + 1)
            if last is not None:
                self.wrap(place, f"{PREFIX}inverse<@>(", place, last, ["drop !"], operator=place, glue="")
        elif token.text == "return" and self.tokens[place + 1].text != ";":
            last = self.statement_end(place) - 1
            if self.simple(place + 1, last):
                self.wrap(place + 1, f"{PREFIX}result<@>(", place + 1, last, ["another value is returned"])
        elif token.text in ("if", "while") and self.tokens[place + 1].text == "(":
            self.test(place + 1)
        if token.text in ("++", "--") and token.kind == "sign" and not self.in_for(place):
            last = self.chain_end(place + 1)
            if last is not None and self.tokens[place - 1].end < token.begin:
                name, other = ("increment", "--") if token.text == "++" else ("decrement", "++")
                self.wrap(place, f"{PREFIX}{name}<@>(", place, last, [f"{token.text} -> {other}"], place, "")
        self.statement(place)

    def replace(self, place, code, whats, table=False):
        """Another text in place of a token."""
        token = self.tokens[place]
        self.add(place, whats, [("replace", token.begin, token.end, code)], table)

    def literal(self, place, token):
        """A constant."""
        around = self.braces_around(place)
        table = "values" in around and "code" not in around
        text = token.text
        if token.kind == "letter":
            self.replace(place, f"{PREFIX}letter<@>({text})", [f"{text} -> the next letter"], table)
        elif token.kind == "text":
            if text != '""' and self.tokens[place + 1].kind != "word":
                self.replace(place, f"{PREFIX}text<@>({' '.join(text.split(chr(10)))})",
                             [f"{text.splitlines()[0]} begins otherwise"], table)
        else:
            zero = text.strip("0.xXfFuUlL") == ""
            more = [f"{text} -> {text} + 1"] + ([] if zero else [f"{text} -> {text} - 1"])
            self.replace(place, f"{PREFIX}number<@, {'false' if zero else 'true'}>({text})", more, table)

    def binary(self, place, token):
        """An operator with two operands."""
        text = token.text
        if text == "?":
            first = self.left_end(place, 1)
            if self.simple(first, place - 1):
                self.wrap(place, f"{PREFIX}condition<@>(", first, place - 1, ["condition turned round"])
            return
        if text not in PRECEDENCE or not ("code" in self.braces_around(place)):
            return
        first, last = self.left_end(place, PRECEDENCE[text]), self.right_end(place, PRECEDENCE[text])
        if first >= place or last <= place:
            return
        if text in BINARY:
            function, others = BINARY[text]
            whats = [f"{text} -> {other}" for other in others]
            self.wrap(place, f"{PREFIX}{function}<@>(", first, last, whats, place)
        elif text in LOGICAL:
            function, other = LOGICAL[text]
            self.wrap(place, f"{PREFIX}{function}<@>([&]() -> bool {{ return bool(", first, last,
                      [f"{text} -> {other}", f"left of {text} only", f"right of {text} only"], place,
                      "); }, [&]() -> bool { return bool(", "); })")

    def test(self, opening):
        """The condition of an if or while."""
        first, last = opening + 1, self.tokens[opening].partner - 1
        place = first
        while place <= last:
            if self.tokens[place].text == ";":
                first = place + 1
            if self.tokens[place].text in ("(", "{", "["):
                place = self.tokens[place].partner
            place += 1
        if self.simple(first, last):
            self.wrap(opening, f"{PREFIX}condition<@>(", first, last, ["condition turned round"])

    def statement(self, place):
        """A call, an assignment, or a jump that is left away."""
        if place == 0 or self.braces_around(place)[:1] != ["code"]:
            return
        before, token = self.tokens[place - 1], self.tokens[place]
        header = before.text == ")" and self.tokens[before.partner - 1].text in ("if", "for", "while")
        if not (before.text in (";", "{", "else", "do") or header
                or before.text == "}" and before.brace == "code"
                or before.text == ":" and self.skipped[place - 1]):
            return
        if self.in_head(place):
            return
        end = None
        if token.text in ("break", "continue", "return") and self.tokens[place + 1].text == ";":
            end = place + 1
        elif token.text in ("++", "--"):
            last = self.chain_end(place + 1)
            end = last + 1 if last is not None and self.tokens[last + 1].text == ";" else None
        elif token.text not in NO_STATEMENT and token.kind in ("word", "sign"):
            last = self.chain_end(place)
            if last is None:
                return
            following = self.tokens[last + 1]
            called = self.tokens[last].text == ")" and last > place
            if following.text == ";" and called or following.text in ASSIGNMENTS:
                end = self.statement_end(last + 1)
                if following.text in ("+=", "-="):
                    name, other = ("add_to", "-=") if following.text == "+=" else ("take_from", "+=")
                    self.wrap(last + 1, f"{PREFIX}{name}<@>(", place, end - 1,
                              [f"{following.text} -> {other}"], last + 1)
        if end is not None:
            begin, stop = token.begin, self.tokens[end].end
            self.add(place, ["statement left away"], [
                ("open", begin, begin - stop, f"{{ if (!{PREFIX}on<@>()) {{ "),
                ("close", stop, stop - begin, " } }")])

    # The copy

    def written(self, left_out):
        """The source with all mutants but those at the places `left_out`, on the same lines."""
        pieces, strict = [], []
        for first, last, (begin, end, word) in self.relaxed:
            sites = [site for site in self.sites if first <= site[0][0].place <= last]
            if first in left_out or not any(site[0][0].place not in left_out for site in sites):
                strict.append((first, last))
            else:
                pieces.append(("replace", begin, end, word))
        for mutants, parts in self.sites:
            place = mutants[0].place
            if place in left_out or any(first <= place <= last for first, last in strict):
                continue
            for part in parts:
                code = part[3].replace("<@", f"<{mutants[0].number}")
                pieces.append((*part[:3], code))
        return assembled(self.text, pieces), strict


def opposite(word):
    """Of true and false."""
    return "false" if word == "true" else "true"


def assembled(text, pieces):
    """Puts the pieces into the text: what closes before what opens, the inner one first where both close."""
    ordered = []
    for kind, position, other, code in pieces:
        if kind == "replace":
            ordered.append(((position, 2, 0), position, other, code))
        else:
            ordered.append(((position, 0 if kind == "close" else 1, other), position, position, code))
    ordered.sort(key=lambda entry: entry[0])
    result, done = [], 0
    for _, begin, end, code in ordered:
        result += [text[done:begin], code]
        done = end
    return "".join(result) + text[done:]

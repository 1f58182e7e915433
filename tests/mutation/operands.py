"""What belongs together in a source: operands, statements, and the braces around them."""

from tokens import spaced, tokens_of

PRECEDENCE = {"||": 1, "&&": 2, "|": 3, "^": 4, "&": 5, "==": 6, "!=": 6, "<": 7, ">": 7, "<=": 7, ">=": 7,
              "<=>": 8, "<<": 9, "+": 10, "-": 10, "*": 11, "/": 11, "%": 11}
STOPS = {"(", "[", "{", ",", ";", "?", ":", "=", "+=", "-=", "*=", "/=", "%=", "|=", "&=", "^=", "<<=", ">>="}
STOP_WORDS = {"return", "throw", "case", "else", "do"}


class Tokens:
    """The tokens of a source, and questions about them."""

    def __init__(self, text):
        self.text, self.tokens = text, tokens_of(text)
        self.skipped = self.find_skipped()

    def find_skipped(self):
        """Marks what has to be known when it is compiled."""
        skipped = [False] * len(self.tokens)
        for place, token in enumerate(self.tokens):
            end = None
            following = self.tokens[place + 1].text if place + 1 < len(self.tokens) else ""
            known = token.text in ("static_assert", "decltype", "sizeof", "alignas", "noexcept")
            if known and following == "(":
                end = self.tokens[place + 1].partner
            elif token.text == "if" and following == "constexpr":
                end = self.tokens[place + 2].partner
            elif token.text == "requires":
                end = self.tokens[place + 1].partner or place
            elif token.text in ("case", "using", "friend", "enum"):
                end = next(i for i in range(place, len(self.tokens)) if self.tokens[i].text in (":", ";"))
                if token.text == "enum":
                    end = next(i for i in range(place, len(self.tokens)) if self.tokens[i].text == ";")
            elif token.angle and token.text == "<" or token.text == "[" and following == "[":
                end = token.partner
            elif token.text == "=" and following in ("default", "delete", "0"):
                if self.tokens[place - 1].text in (")", "const", "override"):
                    end = place + 1
            for inner in range(place, (end or place - 1) + 1):
                skipped[inner] = True
        return skipped

    def opening_around(self, place, *signs):
        """The nearest of these signs that is opened before a place and not closed again."""
        while place > 0:
            place -= 1
            token = self.tokens[place]
            if token.text in (")", "}", "]"):
                place = token.partner
            elif token.text in signs:
                return place
        return None

    def scope_of(self, place):
        """The brace around a place."""
        return self.opening_around(place, "{")

    def braces_around(self, place):
        """From the inner to the outer one."""
        around = []
        while (place := self.scope_of(place)) is not None:
            around.append(self.tokens[place].brace)
        return around

    def left_end(self, place, precedence):
        """The first token of the operand that ends before this place."""
        place -= 1
        while place >= 0:
            token = self.tokens[place]
            if token.kind == "sign" and (token.text in (")", "]") or token.angle and token.text == ">"
                                         or token.text == "}" and token.brace != "scope"):
                if token.text == "}" and self.tokens[token.partner - 1].text not in (")", "]", "mutable") \
                        and token.brace == "code":
                    break
                place = token.partner - 1
                continue
            if token.kind == "sign" and token.text in STOPS or token.text in STOP_WORDS or token.text == "}":
                break
            if PRECEDENCE.get(token.text, 99) < precedence and spaced(self.tokens, place):
                break
            place -= 1
        return place + 1

    def right_end(self, place, precedence):
        """The last token of the operand that begins behind this place."""
        place += 1
        while place < len(self.tokens):
            token = self.tokens[place]
            if token.kind == "sign" and (token.text in ("(", "[", "{") or token.angle and token.text == "<"):
                place = token.partner + 1
                continue
            if token.kind == "sign" and token.text in STOPS or token.text in (")", "]", "}"):
                break
            if PRECEDENCE.get(token.text, 99) <= precedence and spaced(self.tokens, place):
                break
            place += 1
        return place - 1

    def chain_end(self, place):
        """The last token of a name with its members, subscripts and calls."""
        if self.tokens[place].text == "(":
            place = self.tokens[place].partner
        elif self.tokens[place].kind != "word":
            return None
        while place + 1 < len(self.tokens):
            token = self.tokens[place + 1]
            if token.text in ("(", "[") or token.angle and token.text == "<":
                place = token.partner
            elif token.text in ("::", ".", "->") and self.tokens[place + 2].kind == "word":
                place += 2
            else:
                break
        return place

    def simple(self, first, last):
        """No comparison and no logic at the top of these tokens: they are not changed by another mutant."""
        place = first
        while place <= last:
            token = self.tokens[place]
            if token.text == "!" or PRECEDENCE.get(token.text, 99) <= 8 and spaced(self.tokens, place):
                return False
            if token.text in ("?", "=") or token.text == "[" and place == first:
                return False
            place = token.partner + 1 if token.partner is not None and token.partner > place else place + 1
        return first <= last and self.tokens[first].text not in ("{", "true", "false") and not (
            first == last and self.tokens[first].kind != "word")

    def statement_end(self, place):
        """The semicolon of a statement."""
        while self.tokens[place].text != ";":
            token = self.tokens[place]
            place = token.partner + 1 if token.text in ("(", "{", "[") else place + 1
        return place

    def head_around(self, place):
        """The parenthesis around a place, unless a brace is nearer."""
        opening = self.opening_around(place, "(", "{")
        return opening if opening is not None and self.tokens[opening].text == "(" else None

    def in_for(self, place):
        """Between the parentheses of a for."""
        head = self.head_around(place)
        return head is not None and self.tokens[head - 1].text == "for"

    def in_head(self, place):
        """Between the parentheses of a for or an if."""
        return self.head_around(place) is not None

"""Mistakes that one can make in a C++ source: finds the places for them, from the tokens alone.

It leans on the formatting: an operator between two operands has blanks on both sides, the bracket of a template has
none. What is no mistake at all (a reserve(), a line of the log, a size that only has to suffice) is left alone as far
as the tokens tell."""

import dataclasses
import re

TOKEN = re.compile(r"""
      (?P<blank>\s+ | //[^\n]* | /\*.*?\*/)
    | (?P<directive>^[ \t]*\#(?:\\\n|[^\n])*)
    | (?P<text>(?:u8|[uUL])?R"(?P<delimiter>[^(\s]*)\(.*?\)(?P=delimiter)"
             | (?:u8|[uUL])?"(?:\\.|[^"\\])*" | (?:u8|[uUL])?'(?:\\.|[^'\\])*')
    | (?P<number>0[xXbB][\da-fA-F']+\w* | (?:\d[\d']*\.?[\d']*|\.\d+)(?:[eE][+-]?\d+)?\w*)
    | (?P<name>[A-Za-z_]\w*)
    | (?P<operator><<=|>>=|<=>|->\*|\.\.\.|::|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|.)
""", re.X | re.S | re.M)

OTHER_OPERATORS = {
    "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "+=": ["-="], "-=": ["+="], "*=": ["/="], "/=": ["*="],
    "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
    "==": ["!="], "!=": ["=="], "&&": ["||"], "||": ["&&"], "++": ["--"], "--": ["++"],
}
# How closely an operator holds its operands: the smaller, the closer.
CLOSENESS = {
    "*": 5, "/": 5, "%": 5, "+": 6, "-": 6, "<<": 7, ">>": 7, "<=>": 8, "<": 9, "<=": 9, ">": 9, ">=": 9,
    "==": 10, "!=": 10, "&": 11, "^": 12, "|": 13, "&&": 14, "||": 15,
}
ASSIGNMENTS = {"=", "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^=", "<<=", ">>="}

# A statement that begins with one of these is no expression.
DECLARING = set("""
    alignas auto bool case catch char class co_await co_return co_yield concept const constexpr constinit default do
    double else enum explicit export extern float for friend if inline int long mutable namespace operator private
    protected public requires return short signed static static_assert struct switch template thread_local throw try
    typedef typename union unsigned using virtual void volatile while""".split())

# Calls whose whole statement may as well not be there, as far as a test can tell.
WITHOUT_EFFECT = {"reserve", "shrink_to_fit", "squeeze"}
LOGGING = {"fprintf", "perror", "qCritical", "qDebug", "qInfo", "qWarning", "warn"}


@dataclasses.dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int
    end: int


def edited(text, edits):
    """Edits are (start, end, replacement), and don't overlap."""
    for start, end, replacement in sorted(edits, reverse=True):
        text = text[:start] + replacement + text[end:]
    return text


@dataclasses.dataclass(frozen=True)
class Mistake:
    """What to write instead. `switch` are edits that leave the choice to the program, where `@` stands for what says
    whether the mistake is made; there are none where the tokens don't tell how."""
    what: str
    edits: tuple
    switch: tuple = ()

    @property
    def extent(self):
        edits = self.edits + self.switch
        return min(start for start, _, _ in edits), max(end for _, end, _ in edits)

    def shown(self, text):
        """(line number, the lines concerned before, and after)"""
        first = text.rfind("\n", 0, min(start for start, _, _ in self.edits)) + 1
        last = text.find("\n", max(end for _, end, _ in self.edits))
        after = edited(text, self.edits)
        before, after = (" ".join(lines.split()) for lines in (text[first:last], after[first:len(after) - len(text) + last]))
        return text.count("\n", 0, first) + 1, before, after


def other_numbers(written):
    """What somebody might have written instead of a number."""
    match = re.fullmatch(r"(0[xXbB])?([\d'.]+(?:[eE][+-]?\d+)?|[\da-fA-F']+)([a-zA-Z_]\w*)?", written)
    if not match:
        return []
    prefix, digits, suffix = match[1] or "", match[2].replace("'", ""), match[3] or ""
    if prefix and prefix[1] in "xX":
        match = re.fullmatch(r"([\da-fA-F]+)([uUlL]*)", written[2:].replace("'", ""))
        digits, suffix = match[1], match[2]
    if re.search(r"[.eE]", digits) and not prefix:
        value = float(digits)
        choices = [value + 1, value - 1, value * 2, -value, 0.0]
        same = value
    else:
        same = value = int(digits, {"x": 16, "b": 2}[prefix[1].lower()] if prefix else 10)
        choices = [value + 1, value - 1, value * 2, -value, 0]
    others = []
    for choice in dict.fromkeys(choices):
        if choice != same:
            text = repr(abs(choice)) + suffix
            others.append(f"(-{text})" if choice < 0 else text)
    return others


class Source:
    def __init__(self, text):
        self.text = text
        self.tokens = [Token(match.lastgroup if match.lastgroup != "delimiter" else "text", match[0], *match.span())
                       for match in TOKEN.finditer(text) if not match["blank"] and not match["directive"]]
        self.partner = {}
        opened = []
        for index, token in enumerate(self.tokens):
            if token.kind == "operator" and token.text in ("(", "[", "{"):
                opened.append(index)
            elif token.kind == "operator" and token.text in (")", "]", "}") and opened:
                self.partner[index] = opened.pop()
                self.partner[self.partner[index]] = index
        self.spared = self.find_spared()

    def at(self, index):
        return self.tokens[index].text if 0 <= index < len(self.tokens) else ""

    def kind(self, index):
        return self.tokens[index].kind if 0 <= index < len(self.tokens) else ""

    def statement_end(self, index):
        """Where the `;` is that ends what token `index` is in, or the end."""
        while index < len(self.tokens) and self.at(index) != ";":
            if self.at(index) in (")", "]", "}"):
                break
            index = self.partner.get(index, index) + 1
        return index

    def statement_start(self, index):
        """The first token of the statement, condition or argument list that token `index` is in."""
        while index > 0 and self.at(index - 1) not in (";", "{", "}", "(", "["):
            index = self.partner.get(index - 1, index - 1)
        return index

    def find_spared(self):
        """The tokens in which a mistake would be none."""
        spared = set()
        for index, token in enumerate(self.tokens):
            following = self.at(index + 1)
            before = self.at(index - 1)
            if token.text in ("static_assert", "noexcept", "alignas", "decltype", "sizeof") and following == "(":
                spared.update(range(index, self.partner.get(index + 1, index) + 1))
            elif token.text == "[" and following == "[":
                spared.update(range(index, self.partner.get(index, index) + 1))
            elif token.kind == "name" and following == "(" and (
                    token.text in LOGGING or token.text in WITHOUT_EFFECT
                    or (token.text == "log" and before in (".", "->"))):
                spared.update(range(self.statement_start(index), self.statement_end(index) + 1))
            elif token.text == "<" and self.kind(index - 1) == "name" and token.start == self.tokens[index - 1].end:
                spared.update(self.template_arguments(index))
        return spared

    def template_arguments(self, index):
        depth = 0
        for place in range(index, min(index + 60, len(self.tokens))):
            if self.at(place) in (";", "{", "}"):
                return ()
            depth += {"<": 1, ">": -1, ">>": -2}.get(self.at(place), 0)
            if depth <= 0:
                return range(index, place + 1)
        return ()

    def mistakes(self):
        """A list of lists: each inner one holds the mistakes that can be made in one place."""
        places = []
        for index, token in enumerate(self.tokens):
            if index in self.spared:
                continue
            for find in (self.wrong_operator, self.wrong_number, self.wrong_word, self.negated_condition,
                         self.negated_choice, self.dropped_statement, self.dropped_exit):
                if found := find(index, token):
                    places.append(found)
        return places

    def stands_between(self, index):
        """Whether an operator stands between two operands."""
        token = self.tokens[index]
        return self.text[token.start - 1].isspace() and self.text[token.end].isspace()

    def whole(self, first, last):
        """The text of some tokens, or nothing if they stand on several lines."""
        text = self.text[self.tokens[first].start:self.tokens[last].end]
        return "" if "\n" in text else text

    def choice(self, first, last, other):
        """The switch between the expression from token `first` to `last` and another."""
        own = self.whole(first, last)
        if not own:
            return ()
        return ((self.tokens[first].start, self.tokens[last].end, f"(@ ? ({other}) : ({own}))"),)

    def operand_start(self, index):
        first = index
        while first > 0:
            before = self.at(first - 1)
            if before in ("(", "[", "{", ",", ";", "return", "?", ":") or before in ASSIGNMENTS or (
                    before in CLOSENESS and CLOSENESS[before] > CLOSENESS[self.at(index)]
                    and self.stands_between(first - 1)):
                break
            first = self.partner.get(first - 1, first - 1)
        return first

    def operand_end(self, index):
        last = index
        while last + 1 < len(self.tokens):
            after = self.at(last + 1)
            if after in (")", "]", "}", ",", ";", "?", ":") or after in ASSIGNMENTS or (
                    after in CLOSENESS and CLOSENESS[after] >= CLOSENESS[self.at(index)]
                    and self.stands_between(last + 1)):
                break
            last = self.partner.get(last + 1, last + 1)
        return last

    def wrong_operator(self, index, token):
        if token.kind != "operator":
            return []
        before, following = self.at(index - 1), self.at(index + 1)
        if token.text in ("++", "--"):
            other = OTHER_OPERATORS[token.text][0]
            switch = ()
            if self.kind(index + 1) == "name" and self.at(index + 2) in (")", ";", ","):
                switch = self.choice(index, index + 1, other + following)
            return [Mistake("operator", ((token.start, token.end, other),), switch)]
        if token.text in OTHER_OPERATORS and self.stands_between(index) and before != "operator":
            first = last = None
            if token.text in CLOSENESS:
                first, last = self.operand_start(index), self.operand_end(index)
            elif self.begins_statement(self.statement_start(index)) and self.at(self.statement_end(index)) == ";":
                first, last = self.statement_start(index), self.statement_end(index) - 1
            found = []
            for other in OTHER_OPERATORS[token.text]:
                edit = (token.start, token.end, other)
                switch = ()
                if first is not None and self.whole(first, last):
                    start, end = self.tokens[first].start, self.tokens[last].end
                    switch = self.choice(first, last, self.text[start:token.start] + other + self.text[token.end:end])
                found.append(Mistake("operator", (edit,), switch))
            return found
        if token.text == "!":
            return [Mistake("operator", ((token.start, token.end, ""),), ((token.start, token.end, "!@ == !"),))]
        if token.text == "-" and "number" not in (self.kind(index - 1), self.kind(index + 1)) and (
                before == "return" or (self.kind(index - 1) == "operator" and before not in (")", "]", "}"))):
            switch = () if before in ("*", "/", "%") else ((token.start, token.end, "(@ ? 1 : -1) * "),)
            return [Mistake("operator", ((token.start, token.end, ""),), switch)]
        return []

    def wrong_number(self, index, token):
        if token.kind != "number":
            return []
        if self.at(index - 1) == "=" and self.at(index + 1) == ";" and self.at(index - 2) in (
                ")", "const", "noexcept", "override"):
            return []  # a function that has no body here
        return [Mistake("number", ((token.start, token.end, other),), self.choice(index, index, other))
                for other in other_numbers(token.text)]

    def wrong_word(self, index, token):
        if token.text in ("true", "false"):
            other = "false" if token.text == "true" else "true"
            return [Mistake("true/false", ((token.start, token.end, other),), self.choice(index, index, other))]
        if token.text in ("min", "max") and self.at(index - 1) == "::" and self.at(index + 1) == "(" and (
                self.at(index + 2) != ")"):
            other = {"min": "max", "max": "min"}[token.text]
            switch = ()
            if self.at(index - 2) == "std" and index + 1 in self.partner:
                arguments = self.text[token.end:self.tokens[self.partner[index + 1]].end]
                switch = self.choice(index - 2, self.partner[index + 1], f"std::{other}{arguments}")
            return [Mistake("min/max", ((token.start, token.end, other),), switch)]
        return []

    def negated_condition(self, index, token):
        if token.text not in ("if", "while", "for") or self.at(index + 1) != "(" or index + 1 not in self.partner:
            return []
        first, last = index + 2, self.partner[index + 1]
        ends = self.at_depth(first, last, ";")
        if token.text == "for":
            if len(ends) != 2 or ends[1] == ends[0] + 1:
                return []
            first, last = ends[0] + 1, ends[1]
        elif ends:
            first = ends[-1] + 1
        if declared := self.at_depth(first, last, "="):
            if token.text != "if" or ends:
                return []
            close, name = self.tokens[last].start, self.at(declared[0] - 1)
            return [Mistake("condition", ((close, close, f"; !{name}"),),
                            ((close, close, f"; @ != static_cast<bool>({name})"),))]
        return self.negated(first, last - 1)

    def negated_choice(self, index, token):
        if token.text != "?":
            return []
        first = index
        while first > 0:
            before = self.at(first - 1)
            if before in ("(", "[", "{", ",", ";", "return", "?", ":") or before in ASSIGNMENTS:
                break
            first = self.partner.get(first - 1, first - 1)
        return self.negated(first, index - 1)

    def negated(self, first, last):
        operators = {self.at(place) for place in range(first + 1, last) if self.kind(place) == "operator"}
        if first > last or (self.at(first) == "!" and not operators & {"&&", "||", "==", "!=", "<", ">", "<=", ">="}):
            return []  # what drops the "!" says the same
        start, end = self.tokens[first].start, self.tokens[last].end
        return [Mistake("condition", ((start, start, "!("), (end, end, ")")),
                        ((start, start, "(@ != static_cast<bool>("), (end, end, "))")))]

    def at_depth(self, first, last, text):
        """The places of `text` from `first` to before `last` that are in no further brackets."""
        found = []
        while first < last:
            if self.at(first) == text:
                found.append(first)
            first = self.partner.get(first, first) + 1
        return found

    def dropped(self, what, first, last):
        start, end = self.tokens[first].start, self.tokens[last].end
        return [Mistake(what, ((start, end, ";"),), ((start, start, "{ if (!@) "), (end, end, " }")))]

    def begins_statement(self, index):
        before = self.at(index - 1)
        if before in (";", "{", "}", "else", "do"):
            return True
        if before == ")":
            return self.at(self.partner.get(index - 1, index) - 1) in ("if", "for", "while")
        if before == ":":
            return self.at(self.statement_start(index - 1)) in ("case", "default")
        return False

    def dropped_statement(self, index, token):
        if not self.begins_statement(index) or token.text in DECLARING or token.kind in ("number", "text"):
            return []
        if token.kind == "operator" and token.text not in ("*", "++", "--", "(", "::"):
            return []
        end = self.statement_end(index)
        if self.at(end) != ";" or self.declares(index, end):
            return []
        words = {self.at(place) for place in range(index, end)}
        if not (words & (ASSIGNMENTS | {"++", "--", "(", "delete", "break", "continue"})):
            return []
        return self.dropped("dropped statement", index, end)

    def declares(self, index, end):
        """Whether a statement declares something instead of doing it."""
        if self.at(end - 2) == "=" and self.at(end - 1) in ("delete", "default"):
            return True
        if self.at(index) == "delete":
            return False
        place = index
        while place < end:
            token, following = self.tokens[place], self.tokens[place + 1]
            if token.text in ASSIGNMENTS or token.text == "(":
                return False
            if token.text == "{":
                return True
            if following.kind == "name" and token.kind == "name":
                return True
            # A template's bracket, a pointer or a reference: written to the word before, and a name after a blank.
            if following.kind == "name" and token.text in (">", ">>", "*", "&", "&&") and place > index and (
                    token.start == self.tokens[place - 1].end):
                return True
            place = self.partner.get(place, place) + 1
        return False

    def dropped_exit(self, index, token):
        """A return that an if leads to."""
        if token.text != "return" or not self.begins_statement(index):
            return []
        place = index
        if self.at(index - 1) != ")":
            place = self.statement_start(index)
            while place > 0 and self.at(place - 1) in (";", "}"):
                place = self.partner.get(place - 1, place - 1)
                place = self.statement_start(place)
            if self.at(place - 1) != "{":
                return []
            place -= 1
        opened = self.partner.get(place - 1) if self.at(place - 1) == ")" else None
        if opened is None or self.at(opened - 1) != "if":
            return []
        return self.dropped("dropped return", index, self.statement_end(index))

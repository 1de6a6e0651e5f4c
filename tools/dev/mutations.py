"""Which faults mutate.py makes in the sources: one line each, chosen in an order that depends on a seed only."""
import dataclasses
import pathlib
import random
import re

# What is replaced, and by what. Blanks keep templates, pointers and generics out.
OPERATORS = [
    (r" == ", " != "),
    (r" != ", " == "),
    (r" < ", " <= "),
    (r" <= ", " < "),
    (r" > ", " >= "),
    (r" >= ", " > "),
    (r" && ", " || "),
    (r" \|\| ", " && "),
    (r" \+ ", " - "),
    (r" - ", " + "),
    (r" \* ", " / "),
    (r" \+= ", " -= "),
    (r"\+\+", "--"),
    (r"\btrue\b", "false"),
    (r"\bfalse\b", "true"),
    (r"\b0\b", "1"),
    (r"\b1\b", "0"),
    (r"!(?=[\w(])", ""),
    (r"\bbreak;", "continue;"),
]
# A call whose result is not used.
CALL = re.compile(r"^\s+(?!return|throw|delete|else|using|const |auto |co_)[\w.:>\-\[\]()*]+\(.*\);$")
STRING = re.compile(r"\"(?:[^\"\\]|\\.)*\"|'(?:[^'\\]|\\.)*'")
# Declarations, and what only the compiler sees.
LEFT_OUT = re.compile(r"^\s*(//|/\*|\*|#|using |namespace |static_assert|template|\[|case |enum )")


@dataclasses.dataclass(frozen=True)
class Mutation:
    """A line that is replaced by another one."""

    file: str
    line: int
    before: str
    after: str

    @property
    def key(self):
        """What does not change when lines are added above."""
        return self.file, self.before.strip(), self.after.strip()

    def __str__(self):
        return f"{self.file}:{self.line}\n    - {self.before.strip()}\n    + {self.after.strip()}"


def of_line(line):
    """All faulty forms of a line."""
    if LEFT_OUT.match(line):
        return
    code = STRING.sub(lambda found: "_" * len(found.group()), line.split(" // ")[0])
    for pattern, replacement in OPERATORS:
        for found in re.finditer(pattern, code):
            yield line[: found.start()] + replacement + line[found.end() :]
    if CALL.match(line):
        yield re.match(r"\s*", line).group() + ";"


def is_for_others(condition):
    """Whether a condition of the preprocessor is false in the build of the tests."""
    names = ("_WIN32", "_MSC_VER", "__MINGW32__", "_LIBCPP_VERSION")
    return condition.startswith(("#ifdef", "#if defined")) and any(name in condition for name in names)


def compiled_lines(text):
    """The numbered lines of a source that the build of the tests compiles: of two branches the first one, but for Windows."""
    hidden = []
    for number, line in enumerate(text.split("\n"), 1):
        if line.startswith("#if"):
            hidden.append(is_for_others(line))
        elif line.startswith("#else"):
            hidden[-1] = not hidden[-1]
        elif line.startswith("#endif"):
            hidden.pop()
        elif not any(hidden):
            yield number, line


def of_folder(root, folder, suffix):
    """All mutations of the sources in a folder."""
    for path in sorted((root / folder).rglob("*" + suffix)):
        name = str(path.relative_to(root))
        if "Windows" in name or "/obj/" in name:
            continue
        for number, line in compiled_lines(path.read_text(encoding="utf-8")):
            for faulty in of_line(line):
                yield Mutation(name, number, line, faulty)


def chosen(root, folder, suffix, count, seed):
    """As many mutations of a folder, at most one a line."""
    candidates = list(of_folder(pathlib.Path(root), folder, suffix))
    random.Random(f"{seed} {folder}").shuffle(candidates)
    found = {}
    for mutation in candidates:
        if len(found) == count:
            break
        found.setdefault((mutation.file, mutation.line), mutation)
    return list(found.values())


def explained(path):
    """The faults that no test can notice: each has its file, the line before and after it, and the reason, each on a line."""
    blocks = pathlib.Path(path).read_text(encoding="utf-8").strip().split("\n\n")
    faults = set()
    for block in blocks[1:]:  # After the introduction.
        file, before, after, _ = block.split("\n")
        faults.add((file, before.removeprefix("- "), after.removeprefix("+ ")))
    return faults

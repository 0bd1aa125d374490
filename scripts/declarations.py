"""What the library declares, for the scripts that write other languages' declarations and the manual: the rows of
src/members.def and the comments of the public headers."""
import pathlib
import re
from typing import NamedTuple

ROOT = pathlib.Path(__file__).resolve().parent.parent


class Function(NamedTuple):
    name: str
    family: str
    type: str
    suffix: str  # "exact" where the name has none
    shape: str

    @property
    def bits(self):
        """The correct bits that the suffix promises."""
        exact = 24 if self.type.startswith("32") else 53
        return exact if self.suffix == "exact" else int(self.suffix[1:])


def functions():
    """All functions, in the order of the list."""
    rows = re.findall(r"^KELVM_MEMBER\((\w+), (\w+), (\w+), (\w+), (\w+), \w+\)", (ROOT / "src/members.def").read_text(), re.M)
    return [Function(*row) for row in rows]

from typing import NamedTuple

from . import high as high, low as low
from ._ufuncs import *

__version__: str

class Version(NamedTuple):
    major: int
    minor: int
    build: int
    build_number: int
    cpu: str
    library: str
    text: str
    date: str
    path: str

def version() -> Version: ...
def test(*arguments: str) -> bool: ...

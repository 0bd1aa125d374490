from ._ufuncs import *

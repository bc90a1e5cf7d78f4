"""Hints in the words of this package.

The libraries advise calls of mxtool, which need not be installed. Each such hint has a row here; a
test searches the sources of the libraries for others.
"""

from __future__ import annotations

import re

# What the hint of a library begins with, and what it is here.
_WORDS = (
    (r"mxtool config FILE without ", "list(module.parameters) has the names"),
    (r"mxtool config FILE --values .* takes a file ", "Module.compose_file takes a file of values"),
    (r"mxtool config FILE --values ", "Module.compose_file takes it"),
    (r"mxtool config .* --format values ", "Configuration.values_file gives one to start from"),
    (r"make one with: mxtool populate ", "Catalogue.open(url, create=True) makes one"),
    (r"mxtool populate DIRECTORY ", "Catalogue.populate(directory) stores it"),
    (r"mxtool devices ", 'Catalogue.open("sqlite:PATH") opens it'),
    (r"mxtool station show ", "Station.load takes it"),
    (r"mxtool show ", "Module.load takes it"),
    (r"mxtool (check|groups) ", "mxmodule.check(path) lists what is wrong"),
)
_PATTERNS = [(re.compile(pattern, re.DOTALL), words) for pattern, words in _WORDS]


def in_python(hint: str) -> str:
    """Returns the hint of a library as one for users of this package."""
    if "mxtool " in hint:
        for pattern, words in _PATTERNS:
            if pattern.match(hint):
                return words
    return hint

"""What the data home holds."""

from __future__ import annotations

import os
from typing import Any

from . import _native


def directory(home: str | os.PathLike[str] | None) -> str | None:
    """A data home as the extension module takes it."""
    return None if home is None else os.fspath(home)


def data_home(home: str | os.PathLike[str] | None = None) -> str:
    """The directory that data and equations are read from.

    ``home``, else the environment variable ``CORVANE_DATA``, else the data in this package. The first
    that has a file counts: a folder of your own needs to hold what is your own alone, as
    ``mine/CorvaneS/libthmyeos.dll`` and ``mine/CorvaneS/parameters/myeos/argon;1``.
    """
    return _native.find_home(directory(home))


def search(text: str = "", home: str | os.PathLike[str] | None = None) -> list[dict[str, Any]]:
    """Substances with the text in their name, synonyms or CAS number, or of this formula.

    Returns dictionaries with name, formula, cas, aliases, M (kg/mol), T_critical (K), p_critical (Pa),
    acentric_factor, T_triple (K) and T_boiling (K). Without a text: all substances.

    >>> [s["name"] for s in corvane.search("74-98-6")]
    ['propane']
    """
    return _native.substances(text, directory(home))


def equations(substance: str, home: str | os.PathLike[str] | None = None) -> list[str]:
    """Equations of state that have parameters for a substance, best first."""
    return _native.equations_for(_native.substance_name(substance, directory(home)), directory(home))


def mixture_models(home: str | os.PathLike[str] | None = None) -> list[str]:
    """Models of mixtures: an equation of state and a mixing theory, as ``"PR+vdW1"``."""
    return _native.mixture_models(directory(home))

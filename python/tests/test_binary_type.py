"""Types of binaries: published ones that Peng-Robinson has, the order of the transitions, and the rules themselves."""

import numpy as np
import pytest

import corvane as cv
from corvane.binary_type import classify


@pytest.mark.parametrize("pair, kij, expected", [
    # carbon dioxide + decane: II, IV and III follow each other as the components become less alike (van Konynenburg & Scott)
    (("CO2", "decane"), 0.09, "II"), (("CO2", "decane"), 0.1, "IV"), (("CO2", "decane"), 0.11, "IV"),
    (("CO2", "decane"), 0.1241, "III"),
    # measured: Rowlinson & Swinton, Liquids and Liquid Mixtures (1982), ch. 6
    (("methane", "propane"), None, "I"), (("CO2", "water"), None, "III"), (("CO2", "ethane"), None, "II-HA"),
    (("water", "propane"), None, "III-H"), (("helium", "methane"), None, "III"),
    # near its critical point the lighter component is the heavier fluid
    (("xenon", "water"), 0.0114, "III"), (("krypton", "decane"), 0.1575, "III"),
])  # fmt: skip
def test_types(pair, kij, expected):
    kwargs = {} if kij is None else {"kij": kij}
    assert str(cv.Mixture("PR+vdW1", list(pair), **kwargs).binary_type(p_max=5e8)) == expected


PURE, END, HIGH = "a pure component", "a critical end point, where …", "the highest pressure asked for"

TENSION = "a pressure that is no longer positive; it goes on under tension"


class Line:
    def __init__(self, begin, end, x=(0.5, 0.5)):
        self.begin, self.end, self.x = begin, end, np.column_stack([x, np.subtract(1.0, x)])


def phases(lower, upper):
    """A line of three phases with those alike at its ends that are named."""
    row = {"open": (0.1, 0.9, 0.5, 30, 20, 1), "liquids": (0.5, 0.5, 0.9, 20, 20, 1), "vapour": (0.1, 0.9, 0.9, 20, 5, 5)}
    points = np.array([[1, 1, *row[lower], 0, 0, 0, 0, 0], [2, 1, *row[upper], 0, 0, 0, 0, 0]], dtype=float)
    return cv.ThreePhaseLine({"points": points, "begin": "", "end": ""})


LIGHT, HEAVY = Line(PURE, END, (1, 1)), Line(PURE, END, (0, 0))


@pytest.mark.parametrize("critical, three, expected", [
    ([Line(PURE, PURE, (1, 0))], [], "I"),
    ([Line(PURE, PURE, (1, 0)), Line(HIGH, END)], [("open", "liquids")], "II"),
    ([LIGHT, Line(PURE, HIGH, (0, 0))], [("open", "open"), ("open", "vapour")], "III"),
    ([LIGHT, HEAVY, Line(HIGH, END)], [("open", "liquids"), ("liquids", "vapour")], "IV"),
    ([LIGHT, HEAVY], [("liquids", "vapour")], "V"),
    ([Line(PURE, PURE, (1, 0)), Line(END, END)], [("liquids", "liquids")], "VI"),
    ([Line(PURE, PURE, (1, 0)), Line(HIGH, TENSION)], [], "II"), ([LIGHT, Line(PURE, HIGH, (0, 0))], [], "III"),
    ([LIGHT, HEAVY, Line(HIGH, TENSION)], [("liquids", "vapour")], "IV"),
    ([Line(PURE, PURE, (1, 0)), Line(HIGH, HIGH)], [], ""), ([Line(PURE, PURE, (1, 0))], [("open", "open")], ""),
    ([LIGHT], [("open", "vapour")], ""),
    ([LIGHT, Line(PURE, "stuck", (0, 0))], [("open", "vapour")], ""),
])  # fmt: skip
def test_rules(critical, three, expected):
    q = classify(critical, [phases(*t) for t in three], [])
    assert q.type == expected and bool(q.why) == (not expected)

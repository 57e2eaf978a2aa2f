"""Arrays of a pure fluid are calculated many at a time: against single states, whatever is among them."""

import functools

import numpy as np
import pytest
from hypothesis import given, settings
from hypothesis import strategies as st

import corvane as cv

R = 8.3144621  # of the library, J/(mol K)
NONE = float("nan")


@functools.cache
def fluid(eos):
    return cv.Fluid("propane", eos)


def agrees(whole, singles, T):
    """Element by element: the same reasons, and numbers within rounding of the largest term of a sum (some R·T in h)."""
    assert [int(s.status) for s in singles] == whole.status.tolist()
    for name in (*whole.columns, *whole.further):
        if name == "M":  # a single state has it whatever is wrong
            continue
        one, many = np.array([float(getattr(s, name)) for s in singles]), getattr(whole, name)
        largest = {"h": R * np.abs(T), "u": R * np.abs(T), "g": R * np.abs(T), "a": R * np.abs(T), "s": R}.get(name, 0.0)
        assert np.array_equal(np.isnan(one), np.isnan(many)), name
        known = ~np.isnan(one)
        assert np.all((np.abs(many - one) <= 1e-11 * (largest + np.abs(one)))[known]), name


@settings(max_examples=25)
@given(
    st.lists(st.tuples(st.sampled_from([200.0, 300.0, 369.0, 700.0, -1.0, NONE]), st.floats(3.0, 8.0) | st.just(NONE)),
             min_size=1, max_size=9),
    st.sampled_from(["MEOS", "PR", "PCSAFT"]), st.sampled_from([1, 2]))  # fmt: skip
def test_arrays_are_single_states(given_states, eos, threads):
    f, T = fluid(eos), np.array([t for t, _ in given_states])
    p = np.array([10.0**x for _, x in given_states])
    states = f.state(T=T, p=p, threads=threads)
    agrees(states, [f.state(T=a, p=b, errors="nan") for a, b in zip(T.tolist(), p.tolist())], T)
    assert np.array_equal(f.state(p=p, T=T).rho, states.rho, equal_nan=True)
    for phase in ("liquid", "vapour"):
        rho = f.density(T, p, phase, threads=threads)
        one = [float(f.density(a, b, phase, errors="nan")) for a, b in zip(T.tolist(), p.tolist())]
        assert np.allclose(rho, one, rtol=1e-13, equal_nan=True)
        agrees(f.phase(T, rho, threads=threads),
               [f.phase(a, b, errors="nan") for a, b in zip(T.tolist(), rho.tolist())], T)  # fmt: skip
    for name, values in (("T", T), ("p", p)):
        q = f.saturation(**{name: values}, threads=threads)
        singles = [f.saturation(**{name: v}, errors="nan") for v in values.tolist()]
        assert [int(s.status) for s in singles] == q.status.tolist()
        for column in q.columns[:4]:
            one = [float(getattr(s, column)) for s in singles]
            assert np.allclose(getattr(q, column), one, rtol=1e-8, equal_nan=True), column


def test_blocks_shapes_and_what_fails_among_thousands():
    f = fluid("MEOS")
    T, p = np.meshgrid(np.linspace(250.0, 600.0, 60), np.geomspace(1e4, 5e7, 70))
    T, p = T.copy(), p.copy()
    T[14, 43], T[14, 44], p[29, 8], p[-1, -1] = -1.0, NONE, 0.0, np.inf  # 883 and 884, 1748, the last
    one = f.state(T=T, p=p)
    bad = (T[14, 43] == T) | np.isnan(T) | ~(p > 0) | np.isinf(p)
    assert one.h.shape == T.shape and np.array_equal(one.status == cv.Status.INVALID, bad)
    for name in one.columns:
        values = getattr(one, name)
        assert np.all(np.isnan(values[bad])), name
        assert name in ("q", "rho_liquid", "rho_vapour") or np.all(np.isfinite(values[~bad])), name
    many = f.state(T=T, p=p, threads=3)
    assert all(np.array_equal(getattr(one, name), getattr(many, name), equal_nan=True) for name in one.columns)
    # Any part of the arrays has the same bits.
    part = f.state(T=T[3:20, 5:9], p=p[3:20, 5:9])
    assert np.array_equal(part.cp, one.cp[3:20, 5:9], equal_nan=True)
    with pytest.raises(ValueError, match="range"):
        f.state(T=T, p=p, errors="raise")


@pytest.mark.parametrize("eos", ["MEOS", "PR", "PCSAFT"])
def test_saturation_states_its_errors(eos):
    """From a thousand points on a curve that was computed before; its bounds and those of the points hold together."""
    f = fluid(eos)
    T = np.linspace(0.5, 0.999, 1200) * f.T_critical
    curve, points = f.saturation(T=T), f.saturation(T=T[::50])
    for q in (curve, points):
        assert np.all(q.value_error > 0) and np.all(q.value_error < 1e-8) and np.all(q.rho_error < 1e-5)
    assert np.all(np.abs(curve.p[::50] / points.p - 1) <= curve.value_error[::50] + points.value_error)
    for name in ("rho_liquid", "rho_vapour"):
        off = np.abs(getattr(curve, name)[::50] / getattr(points, name) - 1)
        assert np.all(off <= curve.rho_error[::50] + points.rho_error), name
    back = f.saturation(p=curve.p[::50])
    assert np.allclose(back.T, T[::50], rtol=1e-8) and np.all(back.value_error < 1e-8)
    beyond = f.saturation(T=np.array([1.01, 0.9, -1.0]) * f.T_critical)
    assert beyond.status.tolist() == [cv.Status.NO_SOLUTION, cv.Status.OK, cv.Status.INVALID]
    assert np.array_equal(np.isnan(beyond.value_error), [True, False, True])
    frame = beyond.to_pandas()
    assert {"value_error", "rho_error", "status"} <= set(frame.columns) and len(frame) == 3

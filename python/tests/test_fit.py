"""Fits from Python: what is recovered, written and refused. The method is tested in C++."""

import os
import signal
import threading

import numpy as np
import pytest

import corvane as cv


def test_parameters_come_back_and_their_file_is_a_set(tmp_path):
    T = np.linspace(180.0, 350.0, 20)
    q = cv.Fluid("propane", "PCSAFT").saturation(T=T)
    table = {"T/K": T, "p/Pa": q.p, "rhoL/(mol/m3)": q.liquid.rho, "reference": "PC-SAFT itself"}
    r = cv.fit("PCSAFT", "propane", table, ["m", "Ts", "vs"], start={"m": 2.2}, out=tmp_path, new_set=9)
    assert r.converged and r.parameters["m"] == pytest.approx(2.002, abs=1e-7)  # Gross & Sadowski (2001)
    assert r.correlation.shape == (3, 3) and np.allclose(np.diag(r.correlation), 1.0)
    assert {s["quantity"] for s in r.sets} == {"p", "rhoL"} and "± " in repr(r)
    again = cv.Fluid("propane", "PCSAFT", set=9, home=tmp_path)
    assert np.allclose(again.saturation(T=T).p, q.p, rtol=1e-6)


def test_pairs_robust_losses_and_refusals(tmp_path):
    gas = cv.Mixture("PR+vdW1", ["methane", "propane"])
    x = np.linspace(0.1, 0.5, 9)
    p = np.asarray(gas.bubble(np.stack([x, 1 - x], axis=-1), T=250.0).p)
    wrong = p.copy()
    wrong[4] *= 1.3
    fitted = {
        loss: cv.fit("PR+vdW1", ["methane", "propane"], {"T/K": 250.0, "p/MPa": wrong / 1e6, "x_methane": x}, "kij", loss=loss)
        for loss in ("squares", "cauchy")
    }
    assert abs(fitted["cauchy"].parameters["kij"] - 0.0119) < 0.3 * abs(fitted["squares"].parameters["kij"] - 0.0119)
    assert [o["row"] for o in fitted["cauchy"].points if o["outlier"]] == [5]
    for bad in ({"adjust": "nonsense"}, {"loss": "absolute"}, {"bounds": {"kij": (1.0, 0.0)}}):
        with pytest.raises(ValueError):
            cv.fit(**{"model": "PR+vdW1", "substances": ["methane", "propane"], "adjust": "kij",
                      "data": {"T/K": 250.0, "p/MPa": p / 1e6, "x_methane": x}, **bad})
    with pytest.raises(cv.OpenError):
        cv.fit("PR", "nosuch", {"T/K": [1.0]}, "Ts")


def test_an_interrupted_fit_has_the_best_so_far_and_writes_nothing(tmp_path):
    T = np.linspace(180.0, 350.0, 20)
    q = cv.Fluid("propane", "PCSAFT").saturation(T=T)
    before = signal.signal(signal.SIGINT, signal.default_int_handler)
    timer = threading.Timer(1.0, os.kill, (os.getpid(), signal.SIGINT))
    timer.start()
    try:
        with pytest.raises(cv.Interrupted) as caught:  # starts without end
            cv.fit("PCSAFT", "propane", {"T/K": T, "p/Pa": q.p}, ["m", "Ts", "vs"], starts=10**6, out=tmp_path / "mine")
    finally:
        signal.signal(signal.SIGINT, before)
    assert caught.value.partial.parameters["m"] == pytest.approx(2.002, rel=1e-3)  # of the first start
    assert not (tmp_path / "mine").exists()

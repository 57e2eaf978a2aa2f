"""The notebooks run, and print what they show."""

import json
import pathlib

import pytest

matplotlib = pytest.importorskip("matplotlib")
NOTEBOOKS = sorted((pathlib.Path(__file__).parents[1] / "notebooks").glob("*.ipynb"))


@pytest.mark.parametrize("path", NOTEBOOKS, ids=[p.stem for p in NOTEBOOKS])
def test_notebook(path, capsys):
    matplotlib.use("Agg")
    names = {}
    for cell in json.loads(path.read_text())["cells"]:
        if cell["cell_type"] != "code":
            continue
        exec(compile(cell["source"], path.name, "exec"), names)
        assert capsys.readouterr().out == "".join(output["text"] for output in cell["outputs"])
    matplotlib.pyplot.close("all")

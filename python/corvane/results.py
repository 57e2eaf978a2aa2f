"""Results: arrays as attributes, tables for people."""

from __future__ import annotations

from typing import Any, ClassVar, Iterator

from ._numpy import np
from .arrays import unit


class Table:
    """Named arrays of one shape (a composition has the components on one axis more).

    Attributes are the columns named in ``columns``; ``status`` (see :class:`corvane.Status`) says why
    an element is not-a-number.
    """

    columns: ClassVar[tuple[str, ...]] = ()
    status: np.ndarray

    def to_dict(self) -> dict[str, np.ndarray]:
        """All columns by name."""
        return {name: getattr(self, name) for name in self.columns}

    def to_pandas(self) -> Any:
        """A ``pandas.DataFrame``, one row for every element; compositions in columns of their own."""
        import pandas

        return pandas.DataFrame({name: np.ravel(values) for name, values in self._flat()})

    def quantity(self, name: str, registry: Any) -> Any:
        """A column as a quantity of a ``pint.UnitRegistry``."""
        return registry.Quantity(getattr(self, name), unit(name))

    def _flat(self) -> Iterator[tuple[str, np.ndarray]]:
        size = np.shape(self.status)
        for name in self.columns:
            values = np.asarray(getattr(self, name))
            if values.shape == size:
                yield name, values
            else:
                for k in range(values.shape[-1]):
                    yield f"{name}_{self._label(k)}", values[..., k]

    def _label(self, k: int) -> str:
        return str(k)

    def __len__(self) -> int:
        return int(np.size(self.status))

    def __repr__(self) -> str:
        shape = np.shape(self.status)
        head = f"{type(self).__name__}" + (f", shape {shape}" if shape else "")
        lines = [head]
        for name, values in self._flat():
            if np.size(values) and not np.all(np.isnan(values)):
                text = np.array2string(np.asarray(values), precision=8, threshold=8, edgeitems=3)
                lines.append(f"  {name:<14}{text} {unit(name)}".rstrip())
        bad = int(np.count_nonzero(self.status))
        if bad:
            lines.append(f"  {bad} of {np.size(self.status)} without a result")
        return "\n".join(lines)

    def _repr_html_(self) -> str:
        import html

        flat = [(n, np.ravel(v)) for n, v in self._flat() if not np.all(np.isnan(v))]
        rows = min(len(self), 20)
        cell = "".join(f"<th>{html.escape(name)}</th>" for name, _ in flat)
        body = "".join(
            "<tr>" + "".join(f"<td>{values[i]:.7g}</td>" for _, values in flat) + "</tr>"
            for i in range(rows)
        )
        more = f"<caption>first {rows} of {len(self)} rows</caption>" if len(self) > rows else ""
        return f"<table>{more}<thead><tr>{cell}</tr></thead><tbody>{body}</tbody></table>"


def figure_axes(ax: Any) -> Any:
    """The axes to draw in: those given, or new ones."""
    if ax is not None:
        return ax
    import matplotlib.pyplot as plt

    return plt.subplots()[1]


def colour_of(ax: Any, label: str | None) -> str | None:
    """The next colour of the axes with an entry in their legend: what is drawn in it belongs to one model. None
    without a label."""
    return None if label is None else ax.plot([], [], label=label)[0].get_color()

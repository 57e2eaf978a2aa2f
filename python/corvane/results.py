"""Results: arrays as attributes, tables and pictures for people."""

from __future__ import annotations

import functools
from typing import TYPE_CHECKING, Any, Callable, ClassVar, Iterator, Sequence, TypeVar

from ._numpy import np
from .arrays import unit

_Method = TypeVar("_Method", bound=Callable[..., Any])

#: A figure of one column of a journal, for those who give no axes of their own.
PUBLICATION = {
    "figure.figsize": (4.6, 3.45), "figure.dpi": 150, "figure.constrained_layout.use": True, "font.size": 9,
    "axes.linewidth": 0.8, "lines.linewidth": 1.2, "lines.markersize": 4, "xtick.direction": "in",
    "ytick.direction": "in", "xtick.top": True, "ytick.right": True, "legend.frameon": False, "legend.fontsize": "small",
}  # fmt: skip
_AXIS = {"pascal": ("MPa", 1e-6), "kelvin": ("K", 1.0)}


def draws(plot: _Method) -> _Method:
    """Wraps a method ``plot``: without axes it makes some, with the defaults of a publication."""

    @functools.wraps(plot)
    def draw(self: Any, ax: Any = None, **options: Any) -> Any:
        if ax is not None:
            return plot(self, ax, **options)
        import matplotlib.pyplot as plt

        with plt.rc_context(PUBLICATION):
            return plot(self, plt.subplots()[1], **options)

    return draw  # type: ignore[return-value]


class Table:
    """Named arrays of one shape (a composition has the components on one axis more).

    Attributes are the columns named in ``columns`` and ``further``; ``status`` (see :class:`corvane.Status`) says why
    an element is not-a-number; those named in ``words`` belong to the whole.
    """

    columns: ClassVar[tuple[str, ...]] = ()
    further: ClassVar[tuple[str, ...]] = ()  #: columns that are not printed
    words: ClassVar[tuple[str, ...]] = ()
    ordinates: ClassVar[tuple[str, ...]] = ("p",)  #: what a picture shows, the first that is known and varies
    status: np.ndarray

    if TYPE_CHECKING:

        def __getattr__(self, name: str) -> np.ndarray[Any, Any]: ...  # columns are set by their names

    def to_dict(self) -> dict[str, Any]:
        """All attributes by name: columns, ``status``, and what belongs to the whole; units are those of the attributes."""
        named = (*self.columns, *self.further, "status", *self.words)
        others = (name for name in vars(self) if not name.startswith("_") and name not in named)
        return {name: as_dict(getattr(self, name)) for name in (*named, *others)}

    def to_pandas(self) -> Any:
        """A ``pandas.DataFrame``, one row for every element; compositions in columns of their own. Units are those of
        the attributes."""
        import pandas

        columns = self._flat((*self.columns, *self.further, "status"))
        return pandas.DataFrame({name: np.ravel(values) for name, values in columns})

    def quantity(self, name: str, registry: Any) -> Any:
        """A column as a quantity of a ``pint.UnitRegistry``."""
        return registry.Quantity(getattr(self, name), unit(name))

    @draws
    def plot(self, ax: Any = None, *, x: str | None = None, y: str | None = None, label: str | None = None) -> Any:
        """One column over another, by the names that they have in :meth:`to_pandas`; else the first that varies, and
        what the result is about. p in MPa, all else in the units of the attributes. label: of the legend."""
        flat = self._flat((*self.columns, *self.further))
        columns = {name: np.ravel(values).astype(float) for name, values in flat}
        x, y = self._axes(columns, x, y)
        for name in (x, y):
            if name not in columns:
                raise ValueError(f"no column {name}; there are {', '.join(columns)}")
        (named_x, factor_x), (named_y, factor_y) = axis(x), axis(y)
        ax.plot(columns[x] * factor_x, columns[y] * factor_y, "-" if len(self) > 30 else ".-", label=label)
        ax.set(xlabel=named_x, ylabel=named_y)
        if label is not None:
            ax.legend()
        return ax

    def _axes(self, columns: dict[str, np.ndarray], x: str | None, y: str | None) -> tuple[str, str]:
        varying = [name for name, values in columns.items() if np.unique(values[np.isfinite(values)]).size > 1]
        if x is None:
            x = next((name for name in varying if name != y), next(iter(columns)))
        if y is None:
            asked = [name for name in (*self.ordinates, *varying, *columns) if name != x and name in columns]
            y = next((name for name in asked if name in varying), asked[0])
        return x, y

    def _flat(self, names: Sequence[str]) -> Iterator[tuple[str, np.ndarray]]:
        size = np.shape(self.status)
        for name in names:
            values = np.asarray(getattr(self, name))
            for index in np.ndindex(values.shape[len(size):]):
                suffix = "".join(f"_{text}" for text in self._labels(name, index))
                yield name + suffix, values[(..., *index)]

    def _labels(self, name: str, index: tuple[int, ...]) -> list[str]:
        """What a column of an array with further axes is called."""
        return [self._label(k) for k in index]

    def _label(self, k: int) -> str:
        return str(k)

    def __len__(self) -> int:
        return int(np.size(self.status))

    def __repr__(self) -> str:
        shape = np.shape(self.status)
        head = f"{type(self).__name__}" + (f", shape {shape}" if shape else "")
        lines = [head]
        for name, values in self._flat(self.columns):
            if np.size(values) and not np.all(np.isnan(values)):
                text = np.array2string(np.asarray(values), precision=8, threshold=8, edgeitems=3)
                lines.append(f"  {name:<14}{text} {unit(name)}".rstrip())
        bad = int(np.count_nonzero(self.status))
        if bad:
            lines.append(f"  {bad} of {np.size(self.status)} without a result")
        return "\n".join(lines)

    def _repr_html_(self) -> str:
        import html

        flat = [(n, np.ravel(v)) for n, v in self._flat(self.columns) if not np.all(np.isnan(v))]
        rows = min(len(self), 20)
        cell = "".join(f"<th>{html.escape(name)}</th>" for name, _ in flat)
        body = "".join(
            "<tr>" + "".join(f"<td>{float(values[i]):.7g}</td>" for _, values in flat) + "</tr>"
            for i in range(rows)
        )
        more = f"<caption>first {rows} of {len(self)} rows</caption>" if len(self) > rows else ""
        return f"<table>{more}<thead><tr>{cell}</tr></thead><tbody>{body}</tbody></table>"


class OfComponents(Table):
    """A table whose compositions are named after the components."""

    _components: Sequence[str] = ()

    def _label(self, k: int) -> str:
        return self._components[k] if k < len(self._components) else str(k)


class Collection:
    """A result that is made of others. Attributes are those named in ``parts`` and ``words``."""

    parts: ClassVar[tuple[str, ...]] = ()  #: results, or lists and dictionaries of them
    words: ClassVar[tuple[str, ...]] = ()

    def to_dict(self) -> dict[str, Any]:
        """All attributes by name; results in it as dictionaries of theirs."""
        return {name: as_dict(getattr(self, name)) for name in (*self.parts, *self.words)}

    def to_pandas(self) -> Any:
        """All tables in one ``pandas.DataFrame``, with the columns ``part``, ``number`` (of a list) and ``value`` (of an
        isoline), or ``name``."""
        import pandas

        frames = [table.to_pandas().assign(**keys) for keys, table in self._tables() if len(table)]
        return pandas.concat(frames, ignore_index=True) if frames else pandas.DataFrame()

    def _tables(self) -> Iterator[tuple[dict[str, Any], Table]]:
        for part in self.parts:
            inside = getattr(self, part)
            if isinstance(inside, Table):
                yield {"part": part}, inside
            elif isinstance(inside, dict):
                for name, one in inside.items():
                    lines = [(None, one)] if isinstance(one, Table) else one
                    for value, line in lines:
                        yield {"part": part, "name": name} | ({} if value is None else {"value": value}), line
            else:
                for k, one in enumerate(inside):
                    yield {"part": part, "number": k}, one


def as_dict(value: Any) -> Any:
    """Results as dictionaries, also within lists, tuples and dictionaries."""
    if isinstance(value, (Table, Collection)):
        return value.to_dict()
    if isinstance(value, dict):
        return {name: as_dict(one) for name, one in value.items()}
    if isinstance(value, (list, tuple)):
        return type(value)(as_dict(one) for one in value)
    return value


def written_unit(name: str) -> str:
    """The unit of a column as it is printed beside an axis."""
    text = unit(name)
    for long, short in (("kelvin", "K"), ("pascal", "Pa"), ("**3", "³"), ("**6", "⁶"), ("**2", "²"), ("*", " ")):
        text = text.replace(long, short)
    return text


def axis(name: str) -> tuple[str, float]:
    """The words of an axis, and what its values are multiplied with: "p / MPa", 1e-6."""
    short, factor = _AXIS.get(unit(name), (written_unit(name), 1.0))
    return (f"{name} / {short}" if "/" not in short else f"{name} / ({short})") if short else name, factor


def colour_of(ax: Any, label: str | None) -> str | None:
    """The next colour of the axes with an entry in their legend: what is drawn in it belongs to one model. None
    without a label."""
    return None if label is None else ax.plot([], [], label=label)[0].get_color()

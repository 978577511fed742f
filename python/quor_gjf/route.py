"""The route: its words, what they mean, and their edits."""
from __future__ import annotations

from collections.abc import Mapping

from . import _core
from ._core import Keyword, RouteWarning

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Iterable, Iterator, List, Optional, Union

    Options = Union[None, str, Iterable[str], Mapping[str, object]]
    """Options of a keyword: ``"calcfc"``, ``["ts", "maxcycles=50"]``, ``{"ts": None, "maxcycles": 50}``, or None."""


def _option_list(options: Options) -> List[_core._Option]:
    if options is None:
        return []
    if isinstance(options, Mapping):
        return [(name, None if value is None else str(value)) for name, value in options.items()]
    return [options] if isinstance(options, str) else list(options)


class Keywords(Mapping[str, Keyword]):
    """The keywords of a route, by name. Names are compared as Gaussian does: aliases and unique abbreviations count.

    >>> route = gjf.route("#p b3lyp/6-31g(d) opt=(ts,maxcycles=50) freq")
    >>> list(route.keywords), "optim" in route.keywords, route.keywords["opt"].options
    (['opt', 'freq'], True, {'maxcycles': '50', 'ts': 'TRUE'})
    >>> route.keywords["scf"] = {"conver": 10, "xqc": None}
    >>> route.keywords["freq"] = "noraman"
    >>> del route.keywords["opt"]
    >>> str(route)
    '#p b3lyp/6-31g(d) freq=noraman scf=(conver=10,xqc)'
    """

    __slots__ = ("_job",)

    def __init__(self, job: _core.Job) -> None:
        self._job = job

    def __getitem__(self, name: str) -> Keyword:
        found = self._job.keywords_by_name(name)
        if not found:
            raise KeyError(name)
        return found[0]

    def __contains__(self, name: object) -> bool:
        return isinstance(name, str) and self._job.has_keyword(name)

    def __iter__(self) -> Iterator[str]:
        return iter(dict.fromkeys(keyword.name for keyword in self._job.route_keywords()))

    def __len__(self) -> int:
        return len({keyword.name for keyword in self._job.route_keywords()})

    def __setitem__(self, name: str, options: Options) -> None:
        """Put a keyword with these options, in place of one of that name or at the end."""
        self._job.upsert_keyword(name, _option_list(options))

    def __delitem__(self, name: str) -> None:
        if name not in self:
            raise KeyError(name)
        self._job.remove_keyword(name)

    def discard(self, name: str) -> None:
        """Remove a keyword if it is there."""
        self._job.remove_keyword(name)

    def add(self, name: str, options: Options = None) -> None:
        """Append a keyword, even when one of that name is there."""
        self._job.add_keyword(name, _option_list(options))

    def option(self, name: str, option: str) -> Optional[str]:
        """Return the value of an option, ``"TRUE"`` for one without a value, None when it is not there."""
        return self._job.keyword_option(name, option)

    def set_option(self, name: str, option: str, value: object = None) -> None:
        """Give a keyword an option, in place of an equivalent one; the keyword is added when it is not there.

        >>> route = gjf.route("# hf/sto-3g opt=tight")
        >>> route.keywords.set_option("opt", "calcfc")
        >>> route.keywords.set_option("opt", "maxcycles", 100)
        >>> str(route)
        '# hf/sto-3g opt=(calcfc,maxcycles=100,tight)'
        """
        self._job.ensure_keyword_option(name, option, None if value is None else str(value))

    def remove_option(self, name: str, option: str, value: object = None) -> bool:
        """Take an option from a keyword, where it has this value if one is given; return whether it was there.

        >>> route = gjf.route("# hf/sto-3g opt=(ts,maxcycles=50)")
        >>> route.keywords.remove_option("opt", "maxcyc"), route.keywords.remove_option("opt", "calcfc")
        (True, False)
        >>> str(route)
        '# hf/sto-3g opt=ts'
        """
        return self._job.remove_keyword_option(name, option, None if value is None else str(value))

    def all(self, name: str) -> List[Keyword]:
        """Return every keyword of a name."""
        return self._job.keywords_by_name(name)

    def by_category(self, category: str) -> List[Keyword]:
        """Return the keywords of one category of the vocabulary."""
        return self._job.keywords_by_category(category)

    def __repr__(self) -> str:
        return f"<Keywords {' '.join(keyword.text for keyword in self._job.route_keywords())}>"


class Route:
    """A route section. ``str(route)`` is its text; texts that are not there are empty.

    Edits of what the words mean write the route anew from its interpretation; ``append_word`` and ``remove_word`` change the words
    themselves.

    >>> job.route.method, job.route.basis, job.route.print_level
    ('b3lyp', '6-31g(d)', 'p')
    >>> job.route.method = "m062x"
    >>> job.route.basis = "def2svp"
    >>> str(job.route)
    '#p m062x/def2svp opt freq geom=connectivity'
    >>> [warning.code for warning in gjf.route("#p b3lpy/6-31g(d) opt").warnings]
    ['GJF-W005']
    """

    __slots__ = ("_job",)

    def __init__(self, job: _core.Job) -> None:
        self._job = job

    @property
    def words(self) -> List[str]:
        """The words as they stand, head included."""
        return self._job.route_words()

    @words.setter
    def words(self, words: Iterable[str]) -> None:
        self._job.set_route_words(list(words))

    def __str__(self) -> str:
        return " ".join(self.words)

    def __repr__(self) -> str:
        return f"<Route {self}>"

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, (Route, str)):
            return NotImplemented
        return str(self) == str(other)

    __hash__ = None  # type: ignore[assignment]

    def __contains__(self, name: object) -> bool:
        return name in self.keywords

    @property
    def keywords(self) -> Keywords:
        """The keywords that are not part of the model chemistry."""
        return Keywords(self._job)

    @property
    def warnings(self) -> List[RouteWarning]:
        """What could not be placed for certain."""
        return self._job.route_warnings()

    @property
    def print_level(self) -> str:
        """``"n"``, ``"p"``, ``"t"``, ``"n#p"`` or empty."""
        return self._job.route_print_level()

    @print_level.setter
    def print_level(self, level: str) -> None:
        self._job.set_print_level(level)

    @property
    def method(self) -> str:
        """The method. Setting keeps the rest of the model chemistry; ParseError for an empty one."""
        return self._job.route_method()

    @method.setter
    def method(self, method: str) -> None:
        self.set_method(method)

    def set_method(self, method: str, options: Options = None) -> None:
        """Set the method, with options in parentheses."""
        self._job.set_model_chemistry_method(method, _option_list(options))

    def replace_method(self, method: str) -> None:
        """Set the method and drop an ONIOM expression."""
        self._job.set_method(method)

    def clear_method(self) -> None:
        """Drop methods and ONIOM expression."""
        self._job.clear_method()

    @property
    def basis(self) -> str:
        """The basis set. Setting is refused for ONIOM, two model chemistries or a density-fitting basis, and without a method."""
        return self._job.route_basis()

    @basis.setter
    def basis(self, basis: str) -> None:
        self._job.set_model_chemistry_basis(basis)

    def replace_basis(self, basis: str) -> None:
        """Set the basis set, whatever else the model chemistry has."""
        self._job.set_basis(basis)

    def clear_basis(self) -> None:
        """Drop all basis sets."""
        self._job.clear_basis()

    @property
    def secondary_method(self) -> str:
        """The method of the second model chemistry, as in ``mp2/6-31g//hf/3-21g``."""
        return self._job.route_secondary_method()

    @property
    def secondary_basis(self) -> str:
        """The basis set of the second model chemistry."""
        return self._job.route_secondary_basis()

    @property
    def method_options(self) -> str:
        """The method as written when it has options."""
        return self._job.route_method_options()

    @property
    def secondary_method_options(self) -> str:
        """The second method as written when it has options."""
        return self._job.route_secondary_method_options()

    @property
    def density_fitting_basis(self) -> str:
        """The third part of ``method/basis/fitting``."""
        return self._job.route_density_fitting_basis()

    @property
    def oniom_expression(self) -> str:
        """The ONIOM model chemistry as written."""
        return self._job.route_oniom_expression()

    def has_method(self, name: str) -> bool:
        """Tell whether a method is one of the route's."""
        return self._job.has_method(name)

    def append_word(self, word: str) -> None:
        """Append a word as it is."""
        self._job.append_route_word(word)

    def remove_word(self, word: str) -> None:
        """Remove every word that is exactly this one."""
        self._job.remove_route_word(word)

    def interpret(self, vocabulary: str = "") -> None:
        """Interpret the words anew, by the vocabulary document at a path or the usual one."""
        self._job.interpret_route(vocabulary)

    def copy_interpretation(self, other: "Route") -> None:
        """Take over what another route means; ``rewrite`` then writes the words from it."""
        self._job.copy_interpretation(other._job)

    def rewrite(self) -> None:
        """Write the words anew from their interpretation."""
        self._job.rewrite_route()


def route(text: str) -> Route:
    """Interpret a route by itself.

    >>> gjf.route("#n hf/sto-3g opt").keywords["opt"].category
    'job type'
    """
    job = _core.Job()
    job.set_route_line(text)
    return Route(job)

"""Gaussian 16 job files: read, check, edit, write.

>>> import quor_gjf as gjf
>>> job = gjf.loads("#p b3lyp/6-31g(d) opt\\n\\nHelium\\n\\n0 1\\nHe 0 0 0\\n")
>>> job.route.keywords["opt"] = ["ts", "calcfc"]
>>> str(job.route)
'#p b3lyp/6-31g(d) opt=(ts,calcfc)'

Indices count from 0, as everywhere in Python; texts for people and for Gaussian count from 1. In the examples of this package ``job``
is a water molecule with two bonds.
"""
from ._core import Keyword, RouteWarning
from .atoms import Atom, Atoms
from .bonds import Bond, Bonds
from .checks import (CheckError, CheckWarning, Finding, Fix, FixedText, check, check_change, check_codes, check_many, fix,
                     unknown_words)
from .errors import FileError, MissingFileError, ParseError, VocabularyError, WriteError
from .head import ChargeSpin
from .job import Job, Jobs, UnreadableJob
from .outputs import Output, OutputPoint, diagnose
from .reading import edit, edit_all, from_ase, loads, loads_all, read, read_all, read_many, vocabulary_path
from .requests import request
from .route import Keywords, Route, route
from .sections import Section, SectionKind, Sections
from .selection import Selection

__version__ = "0.2.0"

__all__ = [
    "Atom", "Atoms", "Bond", "Bonds", "ChargeSpin", "CheckError", "CheckWarning", "FileError", "Finding", "Fix", "FixedText", "Job", "Jobs",
    "Keyword", "Keywords", "MissingFileError", "Output", "OutputPoint", "ParseError", "Route", "RouteWarning", "Section", "SectionKind", "Sections", "Selection",
    "UnreadableJob", "VocabularyError", "WriteError", "check", "check_change", "check_codes", "check_many", "diagnose", "edit", "edit_all", "fix",
    "from_ase", "loads", "loads_all", "read", "read_all", "read_many", "request", "route", "unknown_words", "vocabulary_path",
]

"""The tool that comes with the package: ``python -m quor_gjf check jobs/`` is ``quor-gjf check jobs/``."""
from __future__ import annotations

import os
import pathlib
import sys
from typing import NoReturn


def main() -> NoReturn:
    """Give way to the tool, with the arguments of this process."""
    tool = pathlib.Path(__file__).parent / "quor-gjf"
    if not tool.is_file():
        sys.exit(f"quor_gjf: the tool is not part of this package: {tool} is missing")
    os.execv(tool, ["quor-gjf", *sys.argv[1:]])


if __name__ == "__main__":
    main()

"""The folders of what is built and installed; the tests and what serves the building are elsewhere."""

import pathlib

ROOT = pathlib.Path(__file__).resolve().parent.parent

# As far as they are there: the tests of the checks have small trees.
FOLDERS = tuple(name for name in ("app", "check", "database", "host", "plugin", "view") if (ROOT / name).is_dir())

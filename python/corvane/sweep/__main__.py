"""``python -m corvane.sweep FILE.toml``: the command ``corvane-sweep``."""

import sys

from .command import main

sys.exit(main())

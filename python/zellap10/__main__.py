"""Runs the command by `python -m zellap10`."""

import sys

from .cli import main

sys.exit(main())

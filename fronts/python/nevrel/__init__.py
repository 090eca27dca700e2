"""Smooths the stair-stepped edges of cels and line art, and leaves everything else bit for bit as it was."""

from nevrel._core import __version__, smooth

__all__ = ["__version__", "smooth"]

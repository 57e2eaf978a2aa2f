"""Interfaces under the names that other packages have made familiar."""

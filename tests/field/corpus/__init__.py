"""Logs of the bridge with known causes: how they are made."""

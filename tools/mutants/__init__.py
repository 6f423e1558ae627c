"""The parts of mutants.py."""

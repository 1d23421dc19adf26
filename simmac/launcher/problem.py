"""What the user must know when something cannot be done."""


class Problem(Exception):
    """Its text is the sentence for the user."""

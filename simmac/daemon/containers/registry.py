"""The registry from which images come."""

import hashlib

KNOWN_TAGS = ("2025.08.0", "2026.07.0", "2026.08.0", "2026.09.0", "2026.09.1", "2026.10.0", "latest")
REPOSITORY = "pihole/pihole"
_LAYERS = 7


class Registry:
    """Which tags of the Pi-hole image exist."""

    def __init__(self):
        self.tags = set(KNOWN_TAGS)

    def layers(self, tag):
        """The short names of an image's layers; the lower ones are shared by all tags."""
        shared = [_digest(f"layer {number}")[:12] for number in range(_LAYERS - 2)]
        return shared + [_digest(f"{tag} layer {number}")[:12] for number in range(2)]

    @staticmethod
    def digest(tag):
        return f"sha256:{_digest(tag)}"


def _digest(text):
    return hashlib.sha256(text.encode()).hexdigest()

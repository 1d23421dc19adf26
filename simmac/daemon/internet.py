"""The names that the small internet of the simulated Mac knows. Whoever serves a name adds it here."""

from pihole.names import AD_ADDRESS, ANY_NAME_BELOW, SECURE_DNS

NAMES = {
    "example.com": ["93.184.215.14"],
    "www.example.com": ["93.184.215.14"],
    "pi-hole.net": ["198.51.100.20"],
    "registry.example": ["198.51.100.10"],
    "www.apple.com": ["198.51.100.30"],
    "captive.apple.com": ["198.51.100.31"],
    "www.gstatic.com": ["198.51.100.25"],
    "www.wikipedia.org": ["198.51.100.40"],
    "doubleclick.net": ["198.51.100.50"],
    "ad.doubleclick.net": ["198.51.100.51"],
    "www.googletagmanager.com": ["198.51.100.52"],
    "www.google-analytics.com": ["198.51.100.53"],
    "adservice.google.com": ["198.51.100.54"],
    **SECURE_DNS,
}


def addresses(name):
    """The IPv4 addresses of a name; none when nobody has registered it."""
    name = name.rstrip(".").lower()
    return [AD_ADDRESS] if name.endswith(ANY_NAME_BELOW) else NAMES.get(name, [])

"""The names that exist on the played internet, and the ones that Pi-hole's block list knows."""

FEED_HOST = "api.github.com"
FEED_ADDRESS = "203.0.113.10"

# Where an advertising name leads when nobody blocks it.
AD_ADDRESS = "203.0.113.66"
AD_ADDRESS_V6 = "2001:db8::66"

# What an upstream answers that blocks names itself.
BLOCK_PAGE = "146.112.61.104"
BLOCKED_UPSTREAM = {"extip.example.org": "EXTERNAL_BLOCKED_IP", "extnull.example.org": "EXTERNAL_BLOCKED_NULL",
                    "extnxra.example.org": "EXTERNAL_BLOCKED_NXRA", "extede.example.org": "EXTERNAL_BLOCKED_EDE15"}

# The public providers of DNS over HTTPS, and where they answer.
SECURE_DNS = {
    "chrome.cloudflare-dns.com": ["162.159.61.3", "172.64.41.3"],
    "mozilla.cloudflare-dns.com": ["162.159.61.4", "172.64.41.4"],
    "dns.google": ["8.8.8.8", "8.8.4.4"],
}

# Every name below it exists, so that a test can ask for one that nobody has asked for before.
ANY_NAME_BELOW = ".page.example.net"

TTL_SECONDS = 300

INTERNET = {
    "example.com": {"A": ["93.184.215.14"]},
    "www.example.com": {"A": ["93.184.215.14"]},
    "example.org": {"A": ["93.184.215.15"]},
    "www.example.org": {"A": ["93.184.215.15"]},
    # Names that lead to blocked ones, and names that the upstream itself blocks.
    "metrics.example.org": {"CNAME": ["stats.g.doubleclick.net"]},
    "deep.example.org": {"CNAME": ["mid.example.org"]},
    "mid.example.org": {"CNAME": ["stats.g.doubleclick.net"]},
    "cdn.example.org": {"CNAME": ["tracker7.example.net"]},
    "alias.example.org": {"CNAME": ["bad.example.net"]},
    "tracker7.example.net": {"A": [AD_ADDRESS], "AAAA": [AD_ADDRESS_V6]},
    "bad.example.net": {"A": [AD_ADDRESS], "AAAA": [AD_ADDRESS_V6]},
    "sub.tracking.example.net": {"A": [AD_ADDRESS], "AAAA": [AD_ADDRESS_V6]},
    "chrome.cloudflare-dns.com": {"A": [AD_ADDRESS], "AAAA": [AD_ADDRESS_V6]},
    "extip.example.org": {"A": [BLOCK_PAGE]},
    "extnull.example.org": {"A": ["0.0.0.0"], "AAAA": ["::"]},
    "example.net": {"A": ["93.184.215.16"], "AAAA": ["2001:db8::16"]},
    "odd.example.net": {"TXT": ["status: NXDOMAIN", "flags: qr"]},
    "large.example.net": {"TXT": ["x" * 250] * 8},
    "many.example.net": {"A": [f"198.51.100.{n}" for n in range(1, 101)]},
    "www.apple.com": {"A": ["198.51.100.20"], "AAAA": ["2001:db8::20"]},
    "captive.apple.com": {"A": ["198.51.100.21"]},
    "www.wikipedia.org": {"A": ["198.51.100.22"], "AAAA": ["2001:db8::22"]},
    "pi-hole.net": {"A": ["198.51.100.23"]},
    "www.gstatic.com": {"A": ["198.51.100.25"]},
    "brew.sh": {"A": ["198.51.100.24"]},
    "github.com": {"A": ["203.0.113.9"]},
    "registry.example": {"A": ["198.51.100.10"]},
    FEED_HOST: {"A": [FEED_ADDRESS]},
    "one.one.one.one": {"A": ["1.1.1.1", "1.0.0.1"]},
    **{host: {"A": addresses} for host, addresses in SECURE_DNS.items()},
}

# Names that tell clients to leave encrypted DNS alone; Pi-hole answers them itself.
SPECIAL = {"use-application-dns.net", "mask.icloud.com", "mask-h2.icloud.com"}

_BLOCKED_TEXT = """
2mdn.net ad.doubleclick.net adcolony.com adform.net adnxs.com ads-api.tiktok.com ads-api.twitter.com
ads-twitter.com ads.facebook.com ads.flurry.com ads.google.com ads.linkedin.com ads.pinterest.com
ads.reddit.com ads.tiktok.com ads.yahoo.com ads.youtube.com adservice.google.com adsrvr.org
advertising.yandex.ru adtago.s3.amazonaws.com adsafeprotected.com amazon-adsystem.com an.facebook.com
analytics.google.com analytics.pinterest.com analytics.query.yahoo.com analytics.tiktok.com
analytics.yahoo.com analyticsengine.s3.amazonaws.com app-measurement.com appsflyer.com appmetrica.yandex.ru
bat.bing.com browser.sentry-cdn.com bluekai.com bugsnag.com casalemedia.com cdn.mouseflow.com chartbeat.com
click.googleanalytics.com cm.g.doubleclick.net crashlytics.com criteo.com criteo.net crwdcntrl.net
demdex.net doubleclick.com doubleclick.net doubleverify.com events.reddit.com events.redditmedia.com
everesttech.net exelator.com extmaps-api.yandex.net flurry.com freshmarketer.com fullstory.com
gemini.yahoo.com getsentry.com google-analytics.com googleadservices.com googleads.g.doubleclick.net
googlesyndication.com googletagmanager.com googletagservices.com grs.hicloud.com hotjar.com hotjar.io
iadsdk.apple.com id5-sync.com imasdk.googleapis.com indexww.com insights.hotjar.com kochava.com krxd.net
log.byteoversea.com log.fc.yahoo.com log.pinterest.com logbak.hicloud.com luckyorange.com m.doubleclick.net
mathtag.com media.net mediavisor.doubleclick.net metrics.apple.com metrics.icloud.com metrics.mzstatic.com
metrika.yandex.ru mixpanel.com moatads.com mookie1.com mouseflow.com mparticle.com notify.bugsnag.com
omtrdc.net openx.net outbrain.com pagead2.googleadservices.com pagead2.googlesyndication.com pangolin.ru
partnerads.ysm.yahoo.com pixel.facebook.com pubmatic.com quantserve.com rlcdn.com rubiconproject.com
samsungads.com scorecardresearch.com segment.io sentry-cdn.com sessions.bugsnag.com sharethrough.com
smartadserver.com smetrics.samsung.com spotxchange.com ssl.google-analytics.com static.ads-twitter.com
static.doubleclick.net static.media.net stats.g.doubleclick.net taboola.com tapad.com teads.tv
tpc.googlesyndication.com trc.taboola.com trk.pinterest.com turn.com udcm.yahoo.com weather-analytics-events.apple.com
www.google-analytics.com www.googleadservices.com www.googletagmanager.com yieldmo.com zedo.com
"""
BLOCKED = frozenset(_BLOCKED_TEXT.split())


def _is_advertising(name: str) -> bool:
    """Whether the name or a domain above it belongs to an advertiser."""
    labels = name.split(".")
    return any(".".join(labels[i:]) in BLOCKED for i in range(len(labels) - 1))


def records(name: str) -> dict | None:
    """What the internet knows about a name: record type to values; None when the name does not exist."""
    if name in INTERNET:
        return INTERNET[name]
    if name.endswith(ANY_NAME_BELOW):
        return {"A": [AD_ADDRESS]}
    if name in SPECIAL or _is_advertising(name):
        return {"A": [AD_ADDRESS], "AAAA": [AD_ADDRESS_V6]}
    return None

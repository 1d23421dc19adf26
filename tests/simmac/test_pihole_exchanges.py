"""Every exchange recorded with a real Pi-hole is sent to the stand-in, and its answer compared member by member."""

import io
import time
import unittest
import zipfile
from pathlib import Path

import recordings
from exchange_case import MAIN_SID, SHAPES, ExchangeCase
from plain_http import exchange, get

# No exchanges, but observations over time; tests of behaviour show each of them.
OBSERVATIONS = {"07-many-wrong-logins", "08b-seats-filling", "10d2-dig-while-off", "10g2-dig-while-on",
                "10p-timer-runs-out", "11h-how-soon-in-log", "12m-during-import"}
def other_zip():
    out = io.BytesIO()
    with zipfile.ZipFile(out, "w") as archive:
        archive.writestr("a.txt", "no backup")
    return out.getvalue()


class LoginExchanges(ExchangeCase):
    def test_Login_is_answered_as_recorded(self):
        for name in ("01-auth-right-password", "02-auth-wrong-password", "03-auth-empty-password",
                     "04a-auth-malformed-json", "04b-auth-no-body", "04c-auth-json-without-password",
                     "04d-auth-password-number", "04e-auth-plain-content-type", "05a-auth-get-nosid"):
            self.replay(name)

    def test_Logout_is_answered_as_recorded(self):
        sid, _ = self.log_in()
        for name in ("05b-auth-get-sid", "05c-auth-delete", "05d-auth-delete-again", "05e-after-logout"):
            self.replay(name, sid)

    def test_Missing_sessions_and_paths_are_answered_as_recorded(self):
        for name in ("06a-nosid", "06b-wrong-sid", "06c-post-nosid", "06d-unknown-path", "06e-wrong-method"):
            self.replay(name)

    def test_Fourth_login_of_a_second_is_answered_as_recorded(self):
        self.pihole.set("login_limit", 3)
        for name in ("07b-rate-limited", "07c-rate-limited-right-password"):
            time.sleep(1.01 - time.time() % 1)
            for _ in range(3):
                exchange(self.pihole.web_port, "POST", "/api/auth", body=b'{"password":"wrong"}')
            self.replay(name)

    def test_Full_seats_are_answered_as_recorded(self):
        self.log_in()
        sid, _ = self.log_in()
        for _ in range(2):
            self.log_in()
        self.replay("08a-sessions-list", sid)
        for _ in range(12):
            self.log_in()
        for name in ("08c-seats-full", "08d-seats-full-old-sid", "08e-seats-full-wrong-password",
                     "08f-login-with-valid-sid-header-seats-full", "08g-login-WRONG-password-with-valid-sid",
                     "08h-login-WRONG-password-with-valid-cookie", "08i-login-empty-password-with-valid-cookie",
                     "08j-delete-session-by-id", "08k-login-after-seat-freed"):
            answer = self.replay(name, sid)
            if name.startswith("08d"):
                self.assertEqual(answer.status, 200)

    def test_Places_of_the_session_id_are_treated_as_recorded(self):
        sid, csrf = self.log_in()
        for name in ("13a-header-sid-get", "13b-header-sid-post-no-csrf", "13c-lowercase-sid-header",
                     "13d-cookie-get-no-csrf", "13e-cookie-post-no-csrf", "13f-cookie-post-X-CSRF-TOKEN",
                     "13g-cookie-post-X-FTL-CSRF", "13h-header-plus-stale-cookie", "13i-stale-header-plus-good-cookie",
                     "13j-sid-in-query", "13k-sid-in-json", "13l-empty-sid-header", "13m-bearer"):
            self.replay(name, sid, csrf)


class DataExchanges(ExchangeCase):
    def test_Blocking_is_switched_as_recorded(self):
        sid, _ = self.log_in()
        for name in ("10a-blocking-get", "10b-blocking-off-300", "10c-blocking-get-timer"):
            self.replay(name, sid)
        self.pihole.ask(do="advance", seconds=1.45 - 0.05)
        later = self.replay_timer("10d-blocking-get-timer-later", sid)
        self.assertAlmostEqual(later.json["timer"], 298.6, delta=0.25)
        for name in ("10e-blocking-off-again-no-timer", "10f-blocking-on-timer-null", "10g-blocking-on",
                     "10h-blocking-string", "10i-blocking-empty-object", "10j-blocking-off-timer-zero",
                     "10k-blocking-off-timer-negative", "10l-blocking-off-timer-string", "10m-blocking-on-timer60",
                     "10n-blocking-on-again", "10o-blocking-off-5s"):
            self.replay(name, sid)

    def replay_timer(self, name, sid):
        """As replay, but the seconds that are left differ a little."""
        recording = recordings.load(name)
        answer = recording.send(self.pihole.web_port, {MAIN_SID: sid})
        self.assertEqual(recordings.shape(answer.json), recordings.shape(recording.answer.json))
        return answer

    def test_Statistics_and_queries_have_the_recorded_shape(self):
        self.pihole.set("log_delay", 0)
        for name, kind in (("example.com", "A"), ("example.com", "TXT"), ("nosuch.invalid", "A"),
                           ("ads.google.com", "HTTPS"), ("doubleclick.net", "A"), ("DoubleClick.NET", "A"),
                           ("doubleclick.net", "A")):
            self.pihole.short(name, kind)
        sid, _ = self.log_in()
        for name in sorted(SHAPES - {"08a-sessions-list", "11i-queries-cases", "14p-info-client"}):
            self.replay(name, sid)

    def test_Special_cases_are_listed_as_recorded(self):
        self.pihole.set("log_delay", 0)
        asked = (("example.com", "A"), ("DoubleClick.NET", "A"), ("ads.google.com", "HTTPS"), ("example.com", "TXT"),
                 ("mask.icloud.com", "A"), ("use-application-dns.net", "A"), ("200.2.0.192.in-addr.arpa", "PTR"))
        for name, kind in (asked[-1], *asked):
            self.pihole.short(name, kind)
        sid, _ = self.log_in()
        answer = self.replay("11i-queries-cases", sid)
        recorded = recordings.load("11i-queries-cases").answer.json["queries"]

        def told(query):
            status = query["status"]
            # Whether an answer came from the cache depends on what was asked before.
            status = "upstream" if status in ("CACHE", "FORWARDED", "CACHE_STALE") else status
            return query["domain"], query["type"], status, query["reply"]["type"], query["list_id"]
        ours = get(self.pihole.web_port, "/api/queries?length=6", sid).json["queries"]
        self.assertEqual([told(query) for query in ours], [told(query) for query in recorded[:6]])
        self.assertEqual(answer.status, 200)

    def test_Open_pages_and_information_are_answered_as_recorded(self):
        self.pihole.set("versions", "no")
        sid, _ = self.log_in()
        for name in ("14a-admin", "14b-admin-slash", "14d-root", "14e-root-host-pi.hole", "14f-admin-api",
                     "14g-admin-head", "14j-api-slash", "14k-info-login", "14l-info-version", "14m-info-messages",
                     "14o-nosuch", "14p-info-client", "16a-config-session"):
            self.replay(name, sid)


class TeleporterExchanges(ExchangeCase):
    def setUp(self):
        super().setUp()
        self.pihole.set("restart", 0.3)
        self.sid, _ = self.log_in()
        archive = get(self.pihole.web_port, "/api/teleporter", self.sid).body
        self.files = {"zip": archive, "garbage.zip": b"no zip at all" * 400, "trunc.zip": archive[:300],
                      "null": b"", "o.zip": other_zip()}

    def wait_for_restart(self):
        time.sleep(0.1)
        deadline = time.monotonic() + 5
        while time.monotonic() < deadline:
            try:
                return exchange(self.pihole.web_port, "GET", "/api/info/login")
            except ConnectionError:
                time.sleep(0.02)
        raise AssertionError("The stand-in did not come back.")

    def test_Download_and_bad_uploads_are_answered_as_recorded(self):
        for name in ("12a-teleporter-get", "12b-teleporter-get-nosid", "12c-teleporter-post-garbage",
                     "12d-teleporter-post-truncated", "12e-teleporter-post-empty-file",
                     "12f-teleporter-post-other-field", "12g-teleporter-post-no-filename",
                     "12h-teleporter-post-bad-filename", "12i-teleporter-post-raw-body", "12j-teleporter-post-nosid",
                     "12k-teleporter-post-other-zip"):
            self.replay(name, self.sid)

    def test_Good_upload_is_answered_as_recorded(self):
        self.replay("12l-teleporter-post-good", self.sid)
        self.wait_for_restart()
        self.replay("12n-after-import-old-sid", self.sid)

    def test_Backup_of_another_password_gives_way_to_the_environment(self):
        self.pihole.restart("other-env-password")
        self.replay("12o-import-backup-of-other-password", self.sid)
        self.wait_for_restart()
        self.replay("12p-after-that-old-sid", self.sid)
        self.replay("12q-after-that-env-password")
        self.replay("12r-after-that-backup-password")

    def test_Backup_of_another_password_counts_without_the_environment(self):
        self.pihole.restart("other-env-password")
        self.pihole.restart(None)
        sid, _ = self.log_in("other-env-password")
        recordings.load("12l-teleporter-post-good").send(self.pihole.web_port, {MAIN_SID: sid}, self.files)
        self.wait_for_restart()
        self.replay("12s-noenv-old-sid", sid)
        self.replay("12t-noenv-old-password")
        self.replay("12u-noenv-backup-password")


class RestartExchanges(ExchangeCase):
    def test_Timed_pause_does_not_survive_a_restart(self):
        sid, _ = self.log_in()
        self.replay("15a-off-timer-then-restart", sid)
        self.pihole.restart()
        self.replay("15b-after-restart", sid)
        self.pihole.ask(do="advance", seconds=35)
        self.replay("15c-after-restart-35s", sid)
        self.assertEqual(self.pihole.short("doubleclick.net"), "203.0.113.66")

    def test_Expired_session_lives_until_somebody_logs_in(self):
        self.pihole.set("session_seconds", 3)
        sid, _ = self.log_in()
        self.pihole.ask(do="advance", seconds=5.5)
        self.replay("16c-expired-sid", sid)
        self.pihole.ask(do="advance", seconds=5.5)
        self.log_in()
        self.replay("16d-expired-sid-after-other-login", sid)

    def test_Environment_password_changes_as_recorded(self):
        sid, _ = self.log_in()
        self.pihole.restart("new-password")
        self.replay("17c-new-env-password-old-sid", sid)
        self.replay("17d-new-env-password-old-password")
        self.replay("17e-new-env-password-new-password")
        self.pihole.restart("new-password")
        self.replay("17c2-same-env-password-old-sid", sid)
        self.pihole.restart("new-password", by_force=True)
        self.replay("17c3-after-kill9-old-sid", sid)
        self.pihole.restart(None)
        self.replay("17f-env-gone-new-password")
        self.replay("17g-env-gone-auth-nothing")

    def test_Changed_password_ends_every_session(self):
        sid, _ = self.log_in()
        other, _ = self.log_in()
        self.pihole.ask(do="password", value="other-password")
        self.replay("17b-old-sid-after", sid)
        self.replay("17i-login-env-password")
        self.replay("17j-login-patched-password")
        self.pihole.ask(do="password", value="third-password")
        self.replay("17l-old-sid-of-the-changer", sid)
        self.replay("17m-old-sid-of-another", other)
        self.replay("17n-login-third")


class NoPasswordExchanges(ExchangeCase):
    password = ""

    def test_Without_a_password_everything_is_answered_as_recorded(self):
        for name in ("18a-nopw-auth-get", "18b-nopw-auth-post-any", "18c-nopw-auth-post-empty",
                     "18d-nopw-summary-no-sid", "18e-nopw-wrong-sid", "18f-nopw-null-sid", "18g-nopw-post",
                     "18h-nopw-delete"):
            self.replay(name)


class EveryRecording(unittest.TestCase):
    def test_No_recording_is_left_out(self):
        source = "".join(path.read_text() for path in Path(__file__).parent.glob("*exchange*.py"))
        self.assertEqual([name for name in recordings.names() if f'"{name}"' not in source], [])


if __name__ == "__main__":
    unittest.main()

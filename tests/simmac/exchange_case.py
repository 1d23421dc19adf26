"""A test that sends recorded exchanges to a stand-in of its own."""

import unittest

import recordings
from pihole_stand_in import StandIn
from plain_http import log_in

MAIN_SID = "MOcR42hNcaSMzfL2W0m+Zw="

# Recordings whose members hold what that day's questions were: their shape is compared.
SHAPES = {"08a-sessions-list", "09-stats-summary", "11a-queries-300", "11b-queries-2", "11c-queries-default",
          "11d-queries-0", "11e-queries-minus1", "11g-queries-domain", "11i-queries-cases", "14p-info-client"}


class ExchangeCase(unittest.TestCase):
    """A stand-in, and a way to send a recording again and compare."""

    maxDiff = None
    password = "test-password"
    client = None
    shapes = frozenset()    # further recordings of which only the shape is compared

    def setUp(self):
        self.pihole = StandIn(self.password, self.client)
        self.addCleanup(self.pihole.close)
        self.files = {}

    def replay(self, name, sid=None, csrf=None):
        recording = recordings.load(name)
        sids = {}
        if sid:
            sids = {value: sid for header, value in recording.headers if header in ("X-FTL-SID", "sid")
                    and value and not value.startswith("AAAA")}
            sids[MAIN_SID] = sid
        answer = recording.send(self.pihole.web_port, sids, self.files, csrf)
        if recording.answer is None:
            return answer
        with self.subTest(name):
            self.compare(name, recording.answer, answer)
        return answer

    def replay_text(self, name, sid):
        """As replay, for an answer that is a text."""
        answer = self.replay(name, sid)
        self.assertEqual(answer.body.decode().strip(), recordings.load(name).answer.body.decode().strip())

    def compare(self, name, expected, answer):
        if name in SHAPES | self.shapes:
            self.assertEqual(recordings.shape(answer.json), recordings.shape(expected.json))
            answer.body = expected.body = b""
        wanted, got = recordings.still(expected), recordings.still(answer)
        if name == "12l-teleporter-post-good":
            # The same upload was recorded with and without a cookie; ours always carries it, as 12o does.
            got["headers"] = [header for header in got["headers"] if header[0] != "Set-Cookie"]
        self.assertEqual(got, wanted)

    def log_in(self, password="test-password"):
        return log_in(self.pihole.web_port, password)

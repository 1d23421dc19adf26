"""Runs inside the Mac: takes one request a line, runs that program, and tells how it ended."""

import base64
import json
import os
import subprocess
import sys
import time


def serve(request):
    """Runs one program to its end, or to SIGTERM at the limit (and SIGKILL a second later)."""
    began = time.monotonic()
    try:
        process = subprocess.Popen(request["argv"], env={**os.environ, **request["env"]}, cwd=request["cwd"],
                                   stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    except OSError as error:
        return {"status": 127, "out": "", "err": base64.b64encode(str(error).encode()).decode(), "seconds": 0.0}
    try:
        out, err = process.communicate(timeout=request["limit"])
    except subprocess.TimeoutExpired:
        process.terminate()
        try:
            out, err = process.communicate(timeout=1)
        except subprocess.TimeoutExpired:
            process.kill()
            out, err = process.communicate()
    return {"status": process.returncode, "out": base64.b64encode(out).decode(),
            "err": base64.b64encode(err).decode(), "seconds": time.monotonic() - began}


print("ready", flush=True)
for line in sys.stdin:
    print(json.dumps(serve(json.loads(line))), flush=True)

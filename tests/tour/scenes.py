"""Playing a table of scenes: each begins with a Mac in a state of its own and ends with a sentence that was seen."""

import sys
import time

import hands
import tree
from screen import NotOnScreen
from stage import Stage, failed


def play(scenes):
    """Plays the scenes one after another, also when one fails, or only those that are named; ends with 1 when something was not seen."""
    by, command, folder, *only = sys.argv[1:]
    tree.start_accessibility()
    stage = Stage(command, folder, hands.Keyboard if by == "keyboard" else hands.Mouse)
    scenes = [scene for scene in scenes if not only or scene.__name__ in only]
    failures = [scene.__name__ for scene in scenes if not _plays(stage, scene)]
    print(f"  {stage.count} pictures in {folder}")
    if failures:
        print(f"  {len(failures)} of {len(scenes)} scenes went wrong: {', '.join(failures)}", file=sys.stderr)
    return 1 if failures else 0


def _plays(stage, scene):
    began, printed = time.monotonic(), len(stage.complaints())
    try:
        scene(stage)
        stage.end()
        if len(stage.complaints()) > printed:
            raise NotOnScreen(f"silence: Corvane printed\n{stage.complaints()[printed:]}")
    except (NotOnScreen, ValueError) as problem:
        failed(stage, f"{scene.__name__}: {problem}")
        stage.end()
        return False
    print(f"  ✓ {scene.__doc__.rstrip('.')} ({time.monotonic() - began:.1f} s)", flush=True)
    return True

"""A thousand reports a second, and somebody who listens: flood.py FLOODED_EDITOR FOLDER

Ends with status 0 only if a few are told, the last one soon, and the window keeps up."""

import collections
import subprocess
import sys
import time

from reader import child, editor_window, expect, listening, running, say_that_somebody_listens, wait

QUIET_TURNS = 1000       # while nobody listens
TURNS = 3000
PER_SECOND = 1000
KNOBS = 8
TOLD_PER_SECOND = 4      # at most, of a knob
LAST = 1.0               # seconds in which the last one is told
BEHIND = 250             # milliseconds, far above what a busy machine takes


def last_value(knob):
    """The last of the program's turns of a knob."""
    return ((TURNS - KNOBS + knob) // KNOBS + 9 * knob) % 128


def flood(editor, turns):
    """Has the knobs turned; the figures come with flooded()."""
    editor.stdin.write(f"{turns}\n")
    editor.stdin.flush()


def flooded(editor, turns, who):
    late, window, process = (float(number) for number in editor.stdout.readline().split())
    seconds = turns / PER_SECOND
    print(f"{who}: the window is up to date after {late:.1f} ms; processor time {window / seconds:.0f} ms a second in "
          f"the GUI thread, {process / seconds:.0f} in all")
    if late > BEHIND:
        sys.exit("the window is behind")


def main(program, _folder):
    with running(program, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True) as editor:
        expect("the editor", editor.stdout.readline(), "ready\n")
        flood(editor, QUIET_TURNS)
        flooded(editor, QUIET_TURNS, "nobody listens")

        say_that_somebody_listens()
        window = wait("the editor's window", editor_window)
        rings = [child(window, f"Knob {knob + 1}")[0] for knob in range(KNOBS)]
        told = collections.defaultdict(list)

        def tell(event):
            # As a screen reader does, which asks for everything.
            if event.source in rings:
                told[rings.index(event.source)].append((time.monotonic(), event.source.queryValue().currentValue))
                event.source.getRole(), event.source.getState(), event.source.name, event.source.description

        with listening(tell, "object:property-change:accessible-value"):
            start = time.monotonic()
            flood(editor, TURNS)
            values = [last_value(knob) for knob in range(KNOBS)]
            wait("the turns", lambda: time.monotonic() - start > TURNS / PER_SECOND)
            wait("the last values", lambda: [told[knob][-1][1] for knob in range(KNOBS) if told[knob]] == values)
        end = start + TURNS / PER_SECOND
        late = max(told[knob][-1][0] for knob in range(KNOBS)) - end
        flooded(editor, TURNS, "somebody listens")
        counts = [len(told[knob]) for knob in range(KNOBS)]
        lasted = time.monotonic() - start
        print(f"{TURNS} turns: {sum(counts) / lasted:.0f} told a second, {min(counts)} to {max(counts)} of a knob, "
              f"the last one {late:.2f} s after the end")
        if max(counts) > TOLD_PER_SECOND * lasted or late > LAST:
            sys.exit("too many, or too late")


main(*sys.argv[1:])

"""A watch that calls somebody, who acknowledges by a key."""

import json
import subprocess
import time

from windows_programs import (HOST, INSTANCE_MAGICS, MODULE, WINE, instance_text, plan_item_that_is_down, wait_until,
                              windows_path)

PLAN = plan_item_that_is_down("router7") + """
code = "device.wav"
alerts = ["night"]

[[alerts]]
name = "night"
instances = ["instance", "Restart"]
repeat = "1s"
"""


def test_a_key_that_is_pressed_ends_what_all_are_told_again(telephone):
    telephone.make_wave("repeat.wav", 60)
    device = telephone.make_wave("device.wav", 0.4)
    event = telephone.make_wave("item_down.wav", 0.6)
    telephone.store()
    program = ["C:\\windows\\system32\\hostname.exe", "C:\\", ""]
    (telephone.folder / "Restart").write_bytes(
        INSTANCE_MAGICS["LaunchProgram"] + b"".join(map(instance_text, program)))
    plan = telephone.folder / "night.toml"
    plan.write_text(PLAN)
    watch = subprocess.Popen([WINE, HOST, "watch", windows_path(plan), "--module", windows_path(MODULE)],
                             cwd=telephone.folder, env=telephone.environment, stdin=subprocess.DEVNULL,
                             stdout=subprocess.DEVNULL)
    telephone.running.append(watch)

    def records(what: str) -> list[dict]:
        journal = telephone.folder / "night.toml.journal"
        lines = journal.read_text().split("\n")[:-1] if journal.exists() else []
        return [record for record in map(json.loads, lines) if record["what"] == what]

    def repeats() -> int:
        return sum(decision["alert"] == "repeat" for record in records("decided")
                   for decision in record["decisions"])
    wait_until(lambda: repeats() > 1 and telephone.capture.sounds())
    telephone.press("5")
    wait_until(lambda: any(record["acknowledged"] for record in records("end")))
    assert telephone.capture.sounds()[1:] == [device, event]
    # What was decided before the key was pressed is dropped, or ends.
    time.sleep(2)
    count = repeats()
    time.sleep(4)
    assert repeats() == count
    watch.send_signal(2)
    assert watch.wait() == 0
    assert telephone.transcript().count("called presses 5") == 1

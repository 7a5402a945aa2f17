#!/usr/bin/env python3
"""escalate.py NOTIFYHOST... -- DEVICE FILE...: tells of a device that went down through the first of the
instance files by which that succeeds, such as

    python escalate.py notifyhost -- router7 C:\\Instances\\Page C:\\Instances\\Call

Prints what became of each attempt. 0: one succeeded; 1: none did."""

import json
import subprocess
import sys


def told(command: list[str]) -> list[dict]:
    """What notifyhost tells, an object a line."""
    done = subprocess.run([*command, "--json"], stdout=subprocess.PIPE, encoding="utf-8", check=False)
    return [json.loads(line) for line in done.stdout.splitlines()]


def delivers(notifyhost: list[str], device: str, file: str) -> bool:
    shown = told([*notifyhost, "show", file])
    if not shown:
        return False
    for line in told([*notifyhost, "send", shown[0]["class"], file, "--set", f"n={device}",
                      "--set", f"C={device} is down", "--timeout", "120"]):
        if "delivered" in line:
            print(f"{shown[0]['name']}: {line['verdict']}")
            return line["delivered"]
    return False


def main() -> int:
    split = sys.argv.index("--")
    notifyhost, (device, *files) = sys.argv[1:split], sys.argv[split + 1:]
    return 0 if any(delivers(notifyhost, device, file) for file in files) else 1


if __name__ == "__main__":
    sys.exit(main())

"""The example of a host with a worker thread, where an alert takes longer than the host waits."""

import subprocess
import time

from windows_programs import HOST, TIME_LIMIT, WINE, build_examples, windows_path


def test_an_alert_that_does_not_end_in_time(mailer, wine_environment, silent_relay, tmp_path):
    _, programs = build_examples(tmp_path, "worker_host")
    subprocess.run([WINE, HOST, "register"], env=wine_environment, check=True, timeout=TIME_LIMIT)
    instance = windows_path(mailer.store(gateway=silent_relay.address))
    began = time.monotonic()
    done = subprocess.run([WINE, programs / "worker_host.exe", "1", "SMTPMail", instance],
                          env=wine_environment, stdout=subprocess.PIPE, timeout=TIME_LIMIT)
    assert done.returncode == 3
    assert done.stdout.decode().replace("\r", "").endswith(f"\n{instance}: no end within 1 seconds\n")
    assert time.monotonic() - began >= 1

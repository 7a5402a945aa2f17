"""The benchmarks run, whatever they measure: most changes are made without looking at them."""

import subprocess

from windows_programs import ROOT, TIME_LIMIT


def told_by(*command) -> str:
    done = subprocess.run(command, cwd=ROOT, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, timeout=TIME_LIMIT)
    assert done.returncode == 0, done.stdout
    return done.stdout


def test_native_ones_and_those_of_the_module():
    told = told_by("bench/run", "--rounds", "1", "module", "smtp_session")
    assert "the module, under Wine" in told
    assert "libcurl, handle kept" in told


def test_the_call():
    assert " keys, heard after " in told_by("bench/voice_call", "--seconds", "6")

"""The fuzz targets of a build: where each has its program and its corpora, and how it is run."""

import os
import pathlib
import random
import re
import shlex
import subprocess
import tempfile
import time
from dataclasses import dataclass

ROOT = pathlib.Path(__file__).resolve().parent.parent
FINDINGS = ROOT / "build" / "fuzz-findings"
PROGRAMS = ROOT / "build" / "sanitize" / "fuzz"
# Inputs up to this size, and how long one may take on a busy machine.
LIMITS = ("-max_len=4096", "-timeout=20")
# Where memory was taken that is misused is told by the input alone, run again: to note it each time costs a third.
QUICK = {"ASAN_OPTIONS": "malloc_context_size=1"}
# What libFuzzer ends with when somebody interrupts it.
INTERRUPTED = 72
# Far above what a run takes beyond its time: its corpus is read first.
PATIENCE = 300


@dataclass
class Run:
    """What a target did."""
    seed: int
    executions: int
    seconds: float
    edges: int
    corpus: str  # how many inputs it has gathered, and their size
    complaint: str  # its words, if it has found something, and how to repeat that
    is_interrupted: bool

    def __str__(self) -> str:
        ending = "found something" if self.complaint else "found nothing"
        return f"{self.executions} executions, {self.edges} edges, {ending} (seed {self.seed})"


def last(pattern: str, output: str) -> str:
    found = re.findall(pattern, output)
    return found[-1] if found else ""


def new_seed(name: str) -> int:
    """Another one each time, or that of a word in BRANTEL_FUZZ_SEED."""
    word = os.environ.get("BRANTEL_FUZZ_SEED")
    chance = random.Random(f"{word} {name}") if word else random.SystemRandom()
    return chance.randrange(1, 1 << 31)


@dataclass(frozen=True)
class Target:
    name: str

    @property
    def program(self) -> pathlib.Path:
        return PROGRAMS / f"{self.name}_fuzz"

    @property
    def corpus(self) -> pathlib.Path:
        """What is kept with the sources, of which each run starts."""
        return ROOT / "fuzz" / "corpus" / self.name

    def run(self, seconds: int, fresh: int | None = None) -> Run:
        """Runs it for so long, or for so many inputs beside what is kept if that is sooner, from what is kept alone,
        so that the seed is all that it takes to do so again."""
        executions = -1 if fresh is None else fresh + len(list(self.corpus.iterdir()))
        with tempfile.TemporaryDirectory(prefix="brantel_fuzz_") as folder:
            run = self.run_on(pathlib.Path(folder), seconds, executions=executions)
        if run.complaint:
            run.complaint += (f"{self.name}: the run again: {shlex.join(self._command(run.seed))} "
                              f'"$(mktemp -d)" {shlex.quote(str(self.corpus))}\n')
        return run

    def run_on(self, gathered: pathlib.Path, seconds: int, seed: int = 0, executions: int = -1) -> Run:
        """Runs it for so long, or so often if that is sooner, from what is kept and gathered, and gathers more."""
        seed = seed or new_seed(self.name)
        FINDINGS.mkdir(parents=True, exist_ok=True)
        gathered.mkdir(parents=True, exist_ok=True)
        started = time.monotonic()
        done = subprocess.run(
            [*self._command(seed), f"-max_total_time={seconds}", f"-runs={executions}", str(gathered),
             str(self.corpus)],
            env={**QUICK, **os.environ}, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
            timeout=seconds + PATIENCE)
        output = done.stdout.decode("utf-8", "replace")
        return Run(seed=seed,
                   executions=int(last(r"(?m)^#(\d+)\s", output) or 0),
                   seconds=time.monotonic() - started,
                   edges=int(last(r" cov: (\d+)", output) or 0),
                   corpus=last(r" corp: (\S+)", output) or "0/0b",
                   complaint="" if done.returncode in (0, INTERRUPTED) else output + self._findings(output),
                   is_interrupted=done.returncode == INTERRUPTED)

    def _command(self, seed: int) -> list[str]:
        return [str(self.program), f"-seed={seed}", *LIMITS, f"-artifact_prefix={FINDINGS}/{self.name}-"]

    def _findings(self, output: str) -> str:
        """How to repeat what was found with the inputs that were kept."""
        return "".join(f"\n{self.name}: its input alone: {shlex.join([str(self.program), kept])}\n"
                       for kept in re.findall(r"Test unit written to (\S+)", output))


def targets() -> list[Target]:
    """Those that are built."""
    return [Target(program.name.removesuffix("_fuzz")) for program in sorted(PROGRAMS.glob("*_fuzz"))]

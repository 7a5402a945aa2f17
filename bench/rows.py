"""The rows of the tables of bench/run: what each way of doing something cost in each round."""

import collections
import statistics
from dataclasses import dataclass, field

IN_NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6}
# What the last part of a name says of the row's two times, "cpu_time" and "real_time".
TIMES = {
    "": {"processor time": "cpu_time"},
    "process_time": {"processor time": "cpu_time", "elapsed": "real_time"},
    "manual_time": {"processor time": "real_time"},
    "real_time": {"elapsed": "real_time"},
}


def parts(name: str) -> tuple[str, str, str]:
    """Title, name and kind of a row, of which the last is often missing."""
    return tuple((name + "/").split("/")[:3])


@dataclass
class Row:
    """A way of doing something, and what it cost in each round."""
    program: str
    name: str  # for the program
    kind: str = ""
    costs: dict[str, list[float]] = field(default_factory=lambda: collections.defaultdict(list))
    instructions: float | None = None

    def note(self, result: dict) -> None:
        """Takes what a program reports of a round, in the form of Google Benchmark."""
        self.kind = parts(result["name"])[2]
        for what, key in TIMES[self.kind].items():
            self.costs[what].append(result[key] * IN_NANOSECONDS[result["time_unit"]])

    def starts_programs(self) -> bool:
        """Whether what it does is done by processes that it starts and times."""
        return self.kind == "manual_time"

    def median(self) -> float:
        return statistics.median(next(iter(self.costs.values())))


# The rows of each group by their names, in the order of the programs.
Groups = dict[str, dict[str, Row]]

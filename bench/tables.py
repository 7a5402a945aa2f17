"""The tables that bench/run prints."""

import math
import statistics

from rows import Row


def spread(values: list[float]) -> list[float]:
    """The median, and between which quartiles."""
    if len(values) == 1:
        return values * 3
    low, median, high = statistics.quantiles(values, n=4, method="inclusive")
    return [median, low, high]


def rounded(figures: list[float], significant: int, decimals: int = 0) -> list[str]:
    """With so many digits that tell something in the first, and at least so many behind the point."""
    digits = max(decimals, significant - 1 - math.floor(math.log10(figures[0])))
    return [f"{figure:,.{digits}f}" for figure in figures]


def cost_in_words(values: list[float]) -> str:
    return "{} ({} to {})".format(*rounded(spread(values), significant=3))


def ratio_in_words(values: list[float]) -> str:
    return "{} ({} to {})".format(*rounded(spread(values), significant=2, decimals=2))


def unit_of(row: Row) -> tuple[str, float]:
    return next((unit, size) for unit, size in (("ms", 1e6), ("us", 1e3), ("ns", 1))
                if row.median() >= 10 * size or unit == "ns")


def cells_of(row: Row, own: Row) -> list[tuple[str, str]]:
    """What a table has of a row behind its name, under these headings."""
    cells = []

    def add(heading: str, cost: str, ratio: str) -> None:
        cells.extend([(heading, cost), ("ours : it", "" if row is own else ratio)])

    unit, size = unit_of(own)
    for what, costs in row.costs.items():
        ratios = [mine / its for mine, its in zip(own.costs[what], costs)]
        add(f"{what}, {unit}", cost_in_words([cost / size for cost in costs]), ratio_in_words(ratios))
    if row.instructions is not None:
        [ratio] = rounded([own.instructions / row.instructions], significant=2, decimals=2)
        add("instructions", f"{row.instructions:,.0f}", ratio)
    return cells


def print_group(title: str, rows: dict[str, Row]) -> None:
    own = next(iter(rows.values()))
    headings = [heading for heading, _ in cells_of(own, own)]
    print_table([title, *headings],
                [[name, *(cell for _, cell in cells_of(row, own))] for name, row in rows.items()])


def print_table(head: list[str], lines: list[list[str]]) -> None:
    widths = [max(map(len, column)) for column in zip(head, *lines)]
    print()
    for line in (head, ["-" * width for width in widths], *lines):
        print("| " + " | ".join(cell.ljust(width) for cell, width in zip(line, widths)) + " |", flush=True)

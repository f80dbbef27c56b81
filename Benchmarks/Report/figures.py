"""What comes out of the rounds of a benchmark.

Runs are dictionaries: program, scene (its title), mode, round, and milliseconds, the median frame of that run.
"""

import statistics


class Figures:
    """Times of programs over the rounds."""

    def __init__(self, runs):
        self._times = {}
        for run in runs:
            cell = self._times.setdefault((run["program"], run["scene"], run["mode"]), {})
            cell[run["round"]] = run["milliseconds"]

    def rounds(self, program, scene, mode):
        """Milliseconds by round."""
        return self._times.get((program, scene, mode), {})

    def milliseconds(self, program, scene, mode):
        """The median over the rounds; None where the program did not run."""
        times = self.rounds(program, scene, mode)
        return statistics.median(times.values()) if times else None

    def range(self, program, scene, mode):
        """The least and the most of all rounds."""
        times = self.rounds(program, scene, mode).values()
        return (min(times), max(times)) if times else None

    def ratio(self, program, other, scene, mode):
        """How many times as long a program takes as another: both of one round, the median over the rounds."""
        own, others = self.rounds(program, scene, mode), self.rounds(other, scene, mode)
        both = own.keys() & others.keys()
        return statistics.median(own[i] / others[i] for i in both) if both else None


def in_words(milliseconds):
    """Three digits: 12.3, 0.456."""
    if milliseconds is None:
        return "–"
    decimals = 0 if milliseconds >= 100 else 1 if milliseconds >= 10 else 2 if milliseconds >= 1 else 3
    return f"{milliseconds:.{decimals}f}"


def ratio_in_words(ratio):
    return "–" if ratio is None else f"{ratio:.2f}"

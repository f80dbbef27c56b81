"""The tables of Documentation/Benchmarks.md."""

import statistics

from figures import in_words, ratio_in_words
from plan import APPLICATION, FRAME, OURS

START, END = "<!-- results: written by Scripts/benchmark -->", "<!-- end of results -->"
HEADINGS = {FRAME: "Whole frames", APPLICATION: "Application and front end alone"}


def markdown(head, *rows):
    lines = ["| " + " | ".join(row) + " |" for row in (head, ["---"] + ["---:"] * (len(head) - 1), *rows)]
    return "\n".join(lines) + "\n"


def ratio_table(figures, scenes, programs, mode):
    """Our milliseconds, and them divided by each other program's."""
    others = [program for program in programs if program != OURS]
    rows = [[scene, in_words(figures.milliseconds(OURS, scene, mode))] +
            [ratio_in_words(figures.ratio(OURS, other, scene, mode)) for other in others]
            for scene in scenes]
    return markdown(["scene", f"{OURS}, ms"] + [f"/ {other}" for other in others], *rows)


def time_table(figures, scenes, programs, mode):
    """Everybody's milliseconds, with the least and the most of the rounds."""
    def cell(program, scene):
        spread = figures.range(program, scene, mode)
        if not spread:
            return "–"
        return f"{in_words(figures.milliseconds(program, scene, mode))} ({in_words(spread[0])}–{in_words(spread[1])})"
    return markdown(["scene", *programs], *([scene] + [cell(program, scene) for program in programs]
                                            for scene in scenes))


def growth_table(figures, sizes, programs):
    """Microseconds a surface, for each number of surfaces in `sizes`: {count: scene}."""
    def cell(program, count):
        time = figures.milliseconds(program, sizes[count], APPLICATION)
        return "–" if time is None else f"{1000 * time / count:.2f}"
    rows = []
    for program in programs:
        least, most = (figures.milliseconds(program, sizes[n], APPLICATION) for n in (min(sizes), max(sizes)))
        growth = most / max(sizes) / (least / min(sizes)) if least and most else None
        rows.append([program] + [cell(program, count) for count in sorted(sizes)] + [ratio_in_words(growth)])
    return markdown(["µs a surface"] + [f"{count:,}" for count in sorted(sizes)] + ["growth"], *rows)


def skinning_table(skinning):
    """Nanoseconds a vertex: `skinning` is {program: {scene: [nanoseconds, ...]}}."""
    scenes = list(dict.fromkeys(scene for times in skinning.values() for scene in times))
    rows = [[program] + [in_words(statistics.median(times[scene]) if scene in times else None) for scene in scenes]
            for program, times in skinning.items()]
    return markdown(["skinning, ns a vertex", *scenes], *rows)


def memory_table(memory, surfaces):
    """Bytes a surface: `memory` is {program: [(bytes with one surface, bytes with `surfaces`), ...]}."""
    rows = []
    for program, pairs in memory.items():
        one, many = (statistics.median(side) for side in zip(*pairs))
        rows.append([program, f"{one / 2**20:.0f}", f"{many / 2**20:.0f}", f"{(many - one) / (surfaces - 1):,.0f}"])
    return markdown(["peak memory", "1 surface, MiB", f"{surfaces:,} surfaces, MiB", "bytes a surface"], *rows)


def start_table(starts):
    """Milliseconds until the end of the first frame: `starts` is {program: [milliseconds, ...]}."""
    rows = [[program, in_words(statistics.median(times))] for program, times in starts.items()]
    return markdown(["from a context to the end of the first frame", "ms"], *rows)


def machine_text(machine):
    return (f"{machine['processor']}, {machine['cores']} cores, {machine['memory']}; {machine['system']}; "
            f"driver {machine['driver']}. {machine['rounds']} rounds on {machine['date']}, commit {machine['commit']}.")


def results_text(results, figures, scenes, sizes, programs):
    """All of it, as it stands between the two marks."""
    parts = [START, machine_text(results["machine"])]
    for mode, heading in HEADINGS.items():
        parts += [f"### {heading}", f"![{heading}, as bars](pictures/benchmark-{mode}.svg)",
                  "Ours divided by theirs, both of one round: below 1 we are faster.",
                  ratio_table(figures, scenes, programs, mode).strip(),
                  "Milliseconds: the median of the rounds' medians, and their range.",
                  time_table(figures, scenes, programs, mode).strip()]
    parts += ["### Skinning, growth, memory, start"]
    if results["skinning"]:
        parts += ["From poses to the arrays that OpenGL takes, on one thread:",
                  skinning_table(results["skinning"]).strip()]
    if all(figures.milliseconds(OURS, scene, APPLICATION) for scene in sizes.values()):
        parts.append(growth_table(figures, sizes, programs).strip())
    parts += [memory_table(results["memory"], results["surfaces"]).strip(), start_table(results["starts"]).strip(), END]
    return "\n\n".join(parts) + "\n"


def put_in(document, text):
    """The document with its results replaced."""
    before, _, rest = document.partition(START)
    _, _, after = rest.partition(END + "\n")
    return before + text + after

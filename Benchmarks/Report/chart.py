"""Bars as SVG that is read on light and dark pages, every value written beside its bar."""

from xml.sax.saxutils import escape

from figures import in_words, ratio_in_words

STYLE = """
  text { font: 14px sans-serif; fill: #1f2328 }
  .head { font-weight: bold } .note { fill: #59636e; font-size: 12px }
  .line { stroke: #59636e; stroke-dasharray: 4 3 } .cut { stroke: #ffffff; stroke-width: 2 }
  .bar0 { fill: #1a66b8 } .bar1 { fill: #767f89 } .bar2 { fill: #a4acb5 }
  .bar3 { fill: #c2701c } .bar4 { fill: #7d4fb0 }
  @media (prefers-color-scheme: dark) {
    text { fill: #f0f6fc } .note { fill: #9198a1 } .line { stroke: #9198a1 }
    .cut { stroke: #0d1117 }
    .bar0 { fill: #58a6ff } .bar1 { fill: #9198a1 } .bar2 { fill: #656d76 }
    .bar3 { fill: #e8954a } .bar4 { fill: #b78be8 }
  }
""".strip("\n")

WIDTH, LABEL, BAR, GAP, ROOM_FOR_VALUE = 860, 140, 18, 14, 170
LONGEST = 5.0  # a bar that would be longer is cut off, and shows it


def bar_chart(title, note, unit_name, groups):
    """
    groups: [(heading, [(label, value to draw, text of the value), ...]), ...]
    unit_name: what the line at 1 means
    """
    most = max((value for _, bars in groups for _, value, _ in bars), default=1.0)
    scale = (WIDTH - LABEL - ROOM_FOR_VALUE) / min(max(most, 1.0), LONGEST)
    labels = list(dict.fromkeys(label for _, bars in groups for label, _, _ in bars))
    parts, y = [], 56
    for heading, bars in groups:
        y += GAP
        parts.append(f'  <text x="10" y="{y + 13}" class="head">{escape(heading)}</text>')
        y += BAR + 4
        top = y
        for label, value, text in bars:
            length = max(min(value, LONGEST) * scale, 1.0)
            after = LABEL + max(length, scale) + 6  # beyond the line, which would run through it
            color = f"bar{labels.index(label) % 5}"
            parts += [f'  <text x="{LABEL - 8}" y="{y + 14}" text-anchor="end">{escape(label)}</text>',
                      f'  <rect class="{color}" x="{LABEL}" y="{y + 1}" width="{length:.1f}" height="{BAR - 2}"/>',
                      f'  <text x="{after:.1f}" y="{y + 14}">{escape(text)}</text>']
            if value > LONGEST:
                cut = f"M{LABEL + length - 24:.1f} {y + BAR} l6 -{BAR} m6 0 l-6 {BAR}"
                parts.append(f'  <path class="cut" d="{cut}"/>')
            y += BAR + 2
        parts.append(f'  <line class="line" x1="{LABEL + scale:.1f}" x2="{LABEL + scale:.1f}" y1="{top}" y2="{y}"/>')
    height = y + 16
    head = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{height}" '
            f'viewBox="0 0 {WIDTH} {height}">',
            f"  <title>{escape(title)}</title>", f"  <style>\n{STYLE}\n  </style>",
            f'  <text x="10" y="24" class="head">{escape(title)}</text>',
            f'  <text x="10" y="44" class="note">{escape(note)} The dashed line: {escape(unit_name)}, in the same round.</text>']
    return "\n".join(head + parts + ["</svg>"]) + "\n"


def frames_chart(figures, scenes, programs, mode, title, note, base):
    """A group of bars a scene, each as many times as long as the base program's frame."""
    groups = []
    for scene in scenes:
        bars = []
        for program in programs:
            ratio = figures.ratio(program, base, scene, mode)
            if ratio is not None:
                time = figures.milliseconds(program, scene, mode)
                bars.append((program, ratio, f"{in_words(time)} ms, {ratio_in_words(ratio)} times"))
        groups.append((scene, bars))
    return bar_chart(title, note, base, groups)

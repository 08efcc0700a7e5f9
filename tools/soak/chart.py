"""Draws the samples of a soak run as four small charts, one below the other, in one SVG file."""

WIDTH, LEFT, RIGHT = 860, 70, 20
TOP, HEIGHT, GAP = 30, 110, 46
INK, GRID, LINE = "#333333", "#dddddd", "#1f6fb2"
CHARTS = ((1, "memory (resident), MB", 1024.0), (2, "open descriptors", 1.0), (3, "load, % of a core", 1.0),
          (4, "log, MB", 1024.0))


def round_up(value, factors):
    """The smallest of the factors times a power of ten that is not below the value."""
    step = 1e-3
    while True:
        for factor in factors:
            if step * factor >= value:
                return step * factor
        step *= 10


def text(x, y, words, anchor="start", size=12):
    return f'<text x="{x:.1f}" y="{y:.1f}" font-size="{size}" text-anchor="{anchor}">{words}</text>'


def chart(rows, column, title, unit, top):
    minutes = max(rows[-1][0], 1e-6)
    highest = round_up(max(max(row[column] for row in rows) / unit, 1e-3), (1, 1.2, 1.6, 2, 3, 4, 6, 8))
    plot = WIDTH - LEFT - RIGHT

    def at(row):
        x = LEFT + plot * row[0] / minutes
        y = top + HEIGHT * (1.0 - row[column] / unit / highest)
        return f"{x:.1f},{y:.1f}"

    parts = [text(LEFT, top - 8, title, size=13)]
    for part in range(3):
        y = top + HEIGHT * (1.0 - part / 2.0)
        parts.append(f'<line x1="{LEFT}" y1="{y}" x2="{WIDTH - RIGHT}" y2="{y}" stroke="{GRID}"/>')
        parts.append(text(LEFT - 8, y + 4, f"{highest * part / 2.0:g}", "end"))
    points = " ".join(at(row) for row in rows)
    parts.append(f'<polyline points="{points}" fill="none" stroke="{LINE}" stroke-width="1.5"/>')
    return parts


def minute_axis(minutes, y):
    step = max(round_up(minutes / 12.0, (1, 2, 5)), 0.001)
    marks = [step * n for n in range(int(minutes / step) + 1)]
    plot = WIDTH - LEFT - RIGHT
    return [text(LEFT + plot * mark / max(minutes, 1e-6), y, f"{mark:g}", "middle") for mark in marks]


def draw(rows, path):
    parts = []
    for number, (column, title, unit) in enumerate(CHARTS):
        parts += chart(rows, column, title, unit, TOP + number * (HEIGHT + GAP))
    bottom = TOP + len(CHARTS) * (HEIGHT + GAP) - GAP
    parts += minute_axis(rows[-1][0], bottom + 18)
    parts.append(text(WIDTH - RIGHT, bottom + 36, "minutes", "end"))
    height = bottom + 46
    with open(path, "w", encoding="utf-8") as file:
        file.write(f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{height}" '
                   f'font-family="DejaVu Sans, sans-serif" fill="{INK}">\n'
                   f'<rect width="{WIDTH}" height="{height}" fill="white"/>\n' + "\n".join(parts) + "\n</svg>\n")

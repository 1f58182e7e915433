"""Plots below each other with one axis of time, as an SVG picture."""

WIDTH, HEIGHT, GAP = 760, 110, 34
LEFT, RIGHT, TOP, BOTTOM = 70, 20, 26, 40
STEPS = (1, 2, 5, 10)
MOST_POINTS = 400


def round_up(value):
    """The next round number, for the end of an axis."""
    power = 1.0
    while power * 10 <= value:
        power *= 10
    while power > value > 0:
        power /= 10
    return next(step * power for step in STEPS if step * power >= value)


def text(x, y, words, anchor="middle", size=12):
    return f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}" font-size="{size}">{words}</text>'


def line(x1, y1, x2, y2, color):
    return f'<path d="M{x1:.1f} {y1:.1f}L{x2:.1f} {y2:.1f}" stroke="{color}" fill="none"/>'


def plot(top, title, times, values, end):
    """One frame with its curve, from zero on."""
    limit = round_up(max(values) * 1.02)
    right, bottom = WIDTH - RIGHT, top + HEIGHT

    def place(time, value):
        return f"{LEFT + (right - LEFT) * time / end:.1f} {bottom - HEIGHT * value / limit:.1f}"

    yield text(LEFT, top - 7, title, "start", 13)
    for part in (0, 0.5, 1):
        y = bottom - HEIGHT * part
        yield line(LEFT, y, right, y, "#bbb")
        yield text(LEFT - 6, y + 4, f"{limit * part:g}", "end")
    every = max(1, len(times) // MOST_POINTS)
    points = "L".join(place(time, value) for time, value in list(zip(times, values))[::every])
    yield f'<path d="M{points}" stroke="#036" fill="none" stroke-width="1.5"/>'


def picture(axis, times, curves):
    """The curves are pairs of a title and its values."""
    end = max(times)
    height = TOP + len(curves) * (HEIGHT + GAP) - GAP + BOTTOM
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{height}" '
             'font-family="sans-serif" fill="#222">',
             f'<rect width="{WIDTH}" height="{height}" fill="#fff"/>']
    for index, (title, values) in enumerate(curves):
        parts += plot(TOP + index * (HEIGHT + GAP), title, times, values, end)
    bottom = height - BOTTOM
    for part in range(5):
        x = LEFT + (WIDTH - RIGHT - LEFT) * part / 4
        parts += [line(x, bottom, x, bottom + 4, "#222"),
                  text(x, bottom + 17, f"{round(end * part / 4, 1):g}")]
    parts += [text((LEFT + WIDTH - RIGHT) / 2, height - 6, axis, size=13), "</svg>", ""]
    return "\n".join(parts)

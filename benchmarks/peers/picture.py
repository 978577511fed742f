"""Draws what readers read right as an SVG, in colours that can be read on light and dark pages."""
from xml.sax.saxutils import escape

WIDTH, ROW, LEFT, BAR, TOP = 760, 30, 150, 360, 64
STYLE = """
  .page { fill: #ffffff } .text { fill: #1f2328 } .faint { fill: #59636e } .rail { fill: #eaeef2 } .bar { fill: #8c959f } .own { fill: #0969da }
  @media (prefers-color-scheme: dark) {
    .page { fill: #0d1117 } .text { fill: #f0f6fc } .faint { fill: #9198a1 } .rail { fill: #262c36 } .bar { fill: #6e7681 } .own { fill: #4493f8 }
  }
  text { font: 14px system-ui, sans-serif } .faint { font-size: 12px }
"""


def told(row):
    times = row["seconds"] / row["ours"] if row["ours"] else 1.0
    return f"{row['right']} of {row['files']}" + (f", {times:.{0 if times > 10 else 1}f} times our time" if times != 1.0 else "")


def description(results, what):
    """What the picture says, in words: README.md repeats it for those who do not see it."""
    return f"Read right, of {what}: " + "; ".join(f"{name} {told(row)}" for name, row in results.items())


def bar(place, name, row, is_ours):
    y = TOP + ROW * place
    length = round(BAR * row["right"] / row["files"])
    return (f'  <text class="text" x="{LEFT - 10}" y="{y + 15}" text-anchor="end">{escape(name)}</text>\n'
            f'  <rect class="rail" x="{LEFT}" y="{y}" width="{BAR}" height="20" rx="3"/>\n'
            f'  <rect class="{"own" if is_ours else "bar"}" x="{LEFT}" y="{y}" width="{length}" height="20" rx="3"/>\n'
            f'  <text class="text" x="{LEFT + BAR + 10}" y="{y + 15}">{escape(told(row))}</text>\n')


def picture(results, what, versions):
    """The text of the SVG; `versions` names the readers with theirs."""
    rows = sorted(results.items(), key=lambda item: -item[1]["right"])
    height = TOP + ROW * len(rows) + 34
    bars = "".join(bar(place, name, row, name.startswith("quor_gjf")) for place, (name, row) in enumerate(rows))
    return (f'<svg xmlns="http://www.w3.org/2000/svg" role="img" width="{WIDTH}" height="{height}" viewBox="0 0 {WIDTH} {height}">\n'
            f"  <title>Gaussian job files read right</title>\n  <desc>{escape(description(dict(rows), what))}</desc>\n  <style>{STYLE}  </style>\n"
            f'  <rect class="page" width="{WIDTH}" height="{height}" rx="6"/>\n'
            f'  <text class="text" x="20" y="28">Gaussian job files read right, of {escape(what)}</text>\n'
            f'  <text class="faint" x="20" y="47">right: as many atoms as people counted; times: processor time for the files that both read right</text>\n'
            f'{bars}  <text class="faint" x="20" y="{height - 14}">make bench-peers: {escape(versions)}</text>\n</svg>\n')

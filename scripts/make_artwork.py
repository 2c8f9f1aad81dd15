#!/usr/bin/env python3
"""Draws the pedometer's pictures as SVG files into res/images, in one dark style.

The SVG files are committed and are what the application loads (by their ".png" name,
rendered at the layout's scale by TivUtils). This script is their recipe: change a colour
or a shape here, rerun it, look at the contact sheets (see docs/ARCHITECTURE.md) and
commit the SVG files. It only writes the files it draws; a picture drawn by hand can sit
beside them. Sizes are those of the 480-wide layout.

    python3 scripts/make_artwork.py [output folder]
"""
import os
import sys

OUT = sys.argv[1] if len(sys.argv) > 1 else os.path.join(
    os.path.dirname(os.path.abspath(__file__)), "..", "res", "images")
os.makedirs(OUT, exist_ok=True)

FONT = "DejaVu Sans, Noto Sans, sans-serif"

# Palette
ACCENT = "#0C9FF9"      # the blue of graphs and the enlarged figures
YELLOW = "#FCD14B"
COLORS = {
    # name: (top, bottom, stroke)
    "green": ("#3FD483", "#1E9A56", "#137040"),
    "red": ("#FF6B61", "#D63A33", "#9E2420"),
    "blue": ("#45B8FF", "#0A86D6", "#075E99"),
    "grey": ("#5C6679", "#394152", "#262C38"),
    "slate": ("#2A3852", "#1A2438", "#3A4A68"),
    "disabled": ("#3A4150", "#2A303C", "#20252F"),
}
# Lighter bodies for buttons that carry black text.
LIGHT = {
    "green": ("#7BE8AA", "#35C377", "#1F8A50"),
    "red": ("#FF958C", "#EC5A50", "#A8302A"),
    "blue": ("#8AD3FF", "#2FA8F5", "#0B70B0"),
}


def write(name, w, h, body, comment):
    svg = (f'<?xml version="1.0" encoding="UTF-8"?>\n'
           f'<!-- {comment} -->\n'
           f'<svg xmlns="http://www.w3.org/2000/svg" width="{w}" height="{h}" viewBox="0 0 {w} {h}">\n'
           f'{body.strip()}\n</svg>\n')
    with open(os.path.join(OUT, name + ".svg"), "w") as f:
        f.write(svg)


def lin(id_, stops, x1=0, y1=0, x2=0, y2=1):
    s = "".join(f'<stop offset="{o}" stop-color="{c}"{"" if a is None else f" stop-opacity={chr(34)}{a}{chr(34)}"}/>'
                for o, c, a in stops)
    return f'<linearGradient id="{id_}" x1="{x1}" y1="{y1}" x2="{x2}" y2="{y2}">{s}</linearGradient>'


def rad(id_, stops, cx=0.5, cy=0.5, r=0.5):
    s = "".join(f'<stop offset="{o}" stop-color="{c}" stop-opacity="{a}"/>' for o, c, a in stops)
    return f'<radialGradient id="{id_}" cx="{cx}" cy="{cy}" r="{r}">{s}</radialGradient>'


# ---------------------------------------------------------------------------
# Buttons: a rounded body with a soft shadow; pressed sinks 2 px and darkens;
# disabled is flat grey with the glyph faded.

def darker(color, f=0.78):
    c = color.lstrip("#")
    return "#" + "".join(f"{int(int(c[i:i + 2], 16) * f):02X}" for i in (0, 2, 4))


def body_shape(w, h, r, colors, state, ident="b", ring=None):
    top, bottom, stroke = colors
    if state == "disabled":
        top, bottom, stroke = COLORS["disabled"]
    if state == "pressed":
        top, bottom = darker(top), darker(bottom)
    if state == "pressed":
        g = lin(ident, [(0, bottom, None), (1, top, None)])
    else:
        g = lin(ident, [(0, top, None), (1, bottom, None)])
    dy = 2 if state == "pressed" else 0
    x, y, bw, bh = 2, 1 + dy, w - 4, h - 6
    out = f"<defs>{g}</defs>\n"
    if state == "normal":
        out += f'<rect x="{x}" y="{y + 3}" width="{bw}" height="{bh}" rx="{r}" fill="#000" opacity="0.35"/>\n'
    elif state == "pressed":
        out += f'<rect x="{x}" y="{y + 1}" width="{bw}" height="{bh}" rx="{r}" fill="#000" opacity="0.25"/>\n'
    out += f'<rect x="{x}" y="{y}" width="{bw}" height="{bh}" rx="{r}" fill="url(#{ident})" stroke="{stroke}" stroke-width="1.5"/>\n'
    if state == "normal":
        out += (f'<rect x="{x + 2}" y="{y + 2}" width="{bw - 4}" height="{bh - 4}" rx="{r - 2}" fill="none" '
                f'stroke="#FFFFFF" stroke-opacity="0.22" stroke-width="1.5"/>\n')
    elif state == "pressed":
        out += (f'<rect x="{x + 1.5}" y="{y + 1.5}" width="{bw - 3}" height="{bh - 3}" rx="{r - 1.5}" fill="none" '
                f'stroke="{ring or "#000000"}" stroke-opacity="{0.9 if ring else 0.25}" stroke-width="2"/>\n')
    return out, dy


def glyph_group(content, state, dy):
    op = "0.4" if state == "disabled" else "1"
    return f'<g transform="translate(0,{dy})" opacity="{op}">{content}</g>\n'


STATES = [("normal", ""), ("pressed", "-pressed"), ("disabled", "-disabled")]


def start_stop():
    for name, col, glyph, what in [
        ("btn-start", "green",
         '<circle cx="40" cy="39" r="24" fill="#000" fill-opacity="0.18"/>'
         '<path d="M32 27 L53 39 L32 51 Z" fill="#FFFFFF" stroke="#FFFFFF" stroke-width="3" stroke-linejoin="round"/>',
         "Start button: a green pill with a play mark; the caption is drawn over its middle."),
        ("btn-stop", "red",
         '<circle cx="40" cy="39" r="24" fill="#000" fill-opacity="0.18"/>'
         '<rect x="29" y="28" width="22" height="22" rx="4" fill="#FFFFFF"/>',
         "Stop button: a red pill with a stop mark; the caption is drawn over its middle."),
    ]:
        for state, suffix in STATES:
            w, h = 220, 84
            b, dy = body_shape(w, h, 39, COLORS[col], state)
            write(name + suffix, w, h, b + glyph_group(glyph, state, dy), what + f" ({state})")


def text_buttons():
    for col in ["green", "red", "blue"]:
        for state, suffix in STATES:
            w, h = 200, 72
            b, dy = body_shape(w, h, 18, LIGHT[col], state)
            write(f"btn-{col}{suffix}", w, h, b,
                  f"Plain {col} button for a black caption ({state}).")


ICONS = {
    "metronome": (
        '<path d="M24 52 L48 52 L41 17 L31 17 Z" fill="none" stroke="#FFF" stroke-width="3.5" stroke-linejoin="round"/>'
        '<rect x="20" y="50" width="32" height="6" rx="2.5" fill="#FFF"/>'
        '<line x1="36" y1="46" x2="51" y2="18" stroke="#FFF" stroke-width="3" stroke-linecap="round"/>'
        '<rect x="-4" y="-3" width="8" height="6" rx="1.5" fill="#FFF" transform="translate(45.5 28.5) rotate(-62)"/>'),
    "alarm": (
        '<path d="M36 17 C27.5 17 23.5 23.5 23.5 31 L23.5 40 L18.5 46.5 L53.5 46.5 L48.5 40 L48.5 31 C48.5 23.5 44.5 17 36 17 Z" '
        'fill="none" stroke="#FFF" stroke-width="3.5" stroke-linejoin="round"/>'
        '<circle cx="36" cy="51.5" r="4.5" fill="#FFF"/>'
        '<line x1="36" y1="13" x2="36" y2="17" stroke="#FFF" stroke-width="3.5" stroke-linecap="round"/>'),
    "info": (
        '<circle cx="36" cy="22.5" r="4" fill="#FFF"/>'
        '<path d="M30 31 L38.5 31 L38.5 49 L42 49" fill="none" stroke="#FFF" stroke-width="4.5" stroke-linecap="round" stroke-linejoin="round"/>'
        '<line x1="30" y1="50" x2="42" y2="50" stroke="#FFF" stroke-width="4.5" stroke-linecap="round"/>'),
}


def round_buttons():
    for icon, cols in [("metronome", ["grey", "green"]), ("alarm", ["grey", "green", "red"]), ("info", ["grey"])]:
        for col in cols:
            for state, suffix in STATES:
                w = h = 72
                top, bottom, stroke = COLORS["disabled"] if state == "disabled" else COLORS[col]
                if state == "pressed":
                    top, bottom = darker(top), darker(bottom)
                g = lin("b", [(0, bottom if state == "pressed" else top, None),
                              (1, top if state == "pressed" else bottom, None)])
                dy = 2 if state == "pressed" else 0
                out = f"<defs>{g}</defs>\n"
                if state == "normal":
                    out += '<circle cx="36" cy="37.5" r="32" fill="#000" opacity="0.35"/>\n'
                out += f'<circle cx="36" cy="{35 + dy}" r="32" fill="url(#b)" stroke="{stroke}" stroke-width="1.5"/>\n'
                if state == "normal":
                    out += '<circle cx="36" cy="35" r="29.5" fill="none" stroke="#FFF" stroke-opacity="0.22" stroke-width="1.5"/>\n'
                elif state == "pressed":
                    out += f'<circle cx="36" cy="{35 + dy}" r="30" fill="none" stroke="#000" stroke-opacity="0.25" stroke-width="2"/>\n'
                out += glyph_group(f'<g transform="translate(0,-1)">{ICONS[icon]}</g>', state, dy)
                write(f"btn-{icon}-{col}{suffix}", w, h, out,
                      f"Round {icon} button, {col} ({state}).")


CAPTION_ICONS = {
    "newlap": (  # a chequered flag
        '<line x1="22" y1="18" x2="22" y2="54" stroke="#FFF" stroke-width="3.5" stroke-linecap="round"/>'
        '<path d="M23 19 L46 19 L41 28 L46 37 L23 37 Z" fill="#FFF"/>'
        '<rect x="28" y="19" width="6" height="6" fill="#1A2438"/><rect x="34" y="25" width="6" height="6" fill="#1A2438"/>'
        '<rect x="28" y="31" width="6" height="6" fill="#1A2438"/><rect x="23" y="25" width="5" height="6" fill="#1A2438"/>'),
    "goal": (  # a target
        '<circle cx="34" cy="36" r="17" fill="none" stroke="#FFF" stroke-width="3.5"/>'
        '<circle cx="34" cy="36" r="10" fill="none" stroke="#FFF" stroke-width="3.5"/>'
        '<circle cx="34" cy="36" r="3.5" fill="#FFF"/>'),
    "lock": (  # a padlock
        '<path d="M26 33 L26 26 A8 8 0 0 1 42 26 L42 33" fill="none" stroke="#FFF" stroke-width="3.5"/>'
        '<rect x="21" y="32" width="26" height="21" rx="4" fill="#FFF"/>'
        '<circle cx="34" cy="41" r="3" fill="#1A2438"/><rect x="32.5" y="42" width="3" height="6" rx="1.5" fill="#1A2438"/>'),
}


def caption_buttons():
    for icon, glyph in CAPTION_ICONS.items():
        for state, suffix in STATES:
            w, h = 150, 72
            b, dy = body_shape(w, h, 14, COLORS["slate"], state, ring=ACCENT)
            badge_top, badge_bottom = (ACCENT, "#0872B8") if state != "disabled" else ("#4A5263", "#394152")
            if state == "pressed":
                badge_top, badge_bottom = darker(badge_top), darker(badge_bottom)
            badge = (f'<defs>{lin("a", [(0, badge_top, None), (1, badge_bottom, None)])}</defs>'
                     f'<rect x="8" y="7" width="52" height="52" rx="12" fill="url(#a)"/>'
                     f'<g transform="translate(0,-3)">{glyph}</g>')
            write(f"btn-{icon}{suffix}", w, h, b + glyph_group(badge, state, dy),
                  f"{icon} button: an icon badge on the left, two caption lines drawn at x 66..144 ({state}).")


def checkboxes():
    write("checkbox_off", 48, 48,
          '<rect x="6" y="6" width="36" height="36" rx="9" fill="#111827" stroke="#8A94A6" stroke-width="3"/>',
          "Check box, not ticked.")
    write("checkbox_on", 48, 48,
          f'<defs>{lin("g", [(0, "#4ADE8A", None), (1, "#1E9A56", None)])}</defs>'
          '<rect x="6" y="6" width="36" height="36" rx="9" fill="url(#g)" stroke="#137040" stroke-width="1.5"/>'
          '<path d="M14 24.5 L21 31.5 L34.5 17" fill="none" stroke="#FFF" stroke-width="5" stroke-linecap="round" stroke-linejoin="round"/>',
          "Check box, ticked.")


def slider():
    write("sliderBlack", 440, 10,
          '<rect x="0.5" y="0.5" width="439" height="9" rx="4.5" fill="#0A0F1A" stroke="#3A4458" stroke-width="1"/>',
          "Slider track, 440 wide: drawn from the slider's middle line down, clipped at the slider's right end.")
    write("sliderGreen", 440, 10,
          f'<defs>{lin("g", [(0, "#5BE69A", None), (1, "#1E9A56", None)])}</defs>'
          '<rect x="0.5" y="0.5" width="439" height="9" rx="4.5" fill="url(#g)"/>'
          '<rect x="3" y="1.5" width="434" height="2.5" rx="1.2" fill="#FFF" opacity="0.3"/>',
          "Slider fill left of the knob; the panel clips it 2 px past the knob's left edge.")
    write("sliderButton", 40, 50,
          f'<defs>{lin("k", [(0, "#FFFFFF", None), (1, "#CBD3E1", None)])}</defs>'
          '<circle cx="20" cy="31.5" r="17" fill="#000" opacity="0.35"/>'
          '<circle cx="20" cy="30" r="17" fill="url(#k)" stroke="#8A94A6" stroke-width="1"/>'
          f'<circle cx="20" cy="30" r="6" fill="{ACCENT}"/>',
          "Slider knob, 40 wide: the disc is centred 5 px below the picture's middle, on the track's middle.")


def goal_bar():
    ticks = "".join(f'<line x1="{x}" y1="8" x2="{x}" y2="20" stroke="#FFF" stroke-opacity="0.12" stroke-width="2"/>'
                    for x in (110, 220, 330))
    write("daily-goal", 440, 28,
          '<rect x="1" y="1" width="438" height="26" rx="13" fill="#0A0F1A" stroke="#3A4458" stroke-width="2"/>' + ticks,
          "Daily goal bar, empty: the frame behind the filled part.")
    write("daily-goal-full", 440, 28,
          f'<defs>{lin("f", [(0, ACCENT, None), (1, "#34C77B", None)], 0, 0, 1, 0)}</defs>'
          '<rect x="1" y="1" width="438" height="26" rx="13" fill="url(#f)"/>'
          '<rect x="8" y="4" width="424" height="7" rx="3.5" fill="#FFF" opacity="0.25"/>',
          "Daily goal bar, filled part: shown clipped to the progress.")


def cells():
    write("black_cell", 460, 52,
          '<rect x="0" y="2" width="460" height="48" rx="10" fill="#0C1322" fill-opacity="0.88"/>'
          f'<rect x="0" y="2" width="5" height="48" rx="2.5" fill="{ACCENT}" opacity="0.8"/>'
          '<rect x="0.5" y="2.5" width="459" height="47" rx="9.5" fill="none" stroke="#26324A" stroke-width="1"/>',
          "Row strip of the history totals and averages.")
    grid = "".join(f'<line x1="12" y1="{y}" x2="408" y2="{y}" stroke="#FFF" stroke-opacity="0.07" stroke-width="1" stroke-dasharray="4 6"/>'
                   for y in (33, 65, 97))
    write("body_graph_back", 420, 130,
          '<rect x="0.5" y="0.5" width="419" height="129" rx="12" fill="#0C1322" fill-opacity="0.85" stroke="#2A3650" stroke-width="1"/>' + grid,
          "Back of one body-measurement graph (chest, waist, hips, weight).")
    write("transparent", 90, 60, '<rect width="90" height="60" fill="none"/>',
          "Fully transparent cover for a touchable table cell.")


def history_rows():
    # A finger-sized row that opens something: a lap, a day, a period.
    for suffix, fill, edge in (("", "#0C1322", "#26324A"), ("-pressed", "#0A4F7E", ACCENT)):
        write(f"history_row{suffix}", 460, 64,
              f'<rect x="0.5" y="2.5" width="459" height="59" rx="11.5" fill="{fill}" fill-opacity="0.9" '
              f'stroke="{edge}" stroke-width="1"/>'
              f'<rect x="0" y="2" width="5" height="60" rx="2.5" fill="{ACCENT}" opacity="0.8"/>'
              '<path d="M428 20 L440 32 L428 44" fill="none" stroke="#8FA6C4" stroke-width="3" '
              'stroke-linecap="round" stroke-linejoin="round"/>',
              f"Row button of the history lists, a chevron at the right{' (pressed)' if suffix else ''}.")


def top_highlight():
    write("top-data-selected", 152, 64,
          f'<defs>{lin("h", [(0, ACCENT, 0.38), (1, ACCENT, 0.10)])}</defs>'
          f'<rect x="1.5" y="1.5" width="149" height="61" rx="12" fill="url(#h)" stroke="{ACCENT}" stroke-width="2.5"/>'
          f'<rect x="46" y="57" width="60" height="4" rx="2" fill="{ACCENT}"/>',
          "Highlight behind the selected value on the main screen.")


def unlock():
    chev = "".join(
        f'<path d="M{x} 48 L{x + 11} 60 L{x} 72" fill="none" stroke="#FFF" stroke-width="4" '
        f'stroke-linecap="round" stroke-linejoin="round" opacity="{o}"/>'
        for x, o in ((380, 0.35), (397, 0.65), (414, 0.95)))
    write("unlock", 480, 120,
          f'<defs>{lin("k", [(0, "#45B8FF", None), (1, "#0A86D6", None)])}</defs>'
          '<rect x="30" y="28" width="420" height="64" rx="32" fill="#FFF" fill-opacity="0.07" stroke="#FFF" stroke-opacity="0.28" stroke-width="2"/>'
          '<circle cx="62" cy="62" r="27" fill="#000" opacity="0.35"/>'
          '<circle cx="62" cy="60" r="27" fill="url(#k)" stroke="#075E99" stroke-width="1.5"/>'
          '<path d="M55 58 L55 52 A7 7 0 0 1 69 52" fill="none" stroke="#FFF" stroke-width="3.5" stroke-linecap="round"/>'
          '<rect x="51" y="57" width="22" height="17" rx="3.5" fill="#FFF"/>' + chev,
          "Slide-to-unlock track shown on the lock pane.")


def background_base(extra_glow=True):
    out = (f'<defs>{lin("bg", [(0, "#13213A", None), (0.55, "#0B1222", None), (1, "#05080F", None)])}'
           f'{rad("g1", [(0, ACCENT, 0.22), (1, ACCENT, 0)], 0.1, 0.05, 0.75)}'
           f'{rad("g2", [(0, "#34C77B", 0.10), (1, "#34C77B", 0)], 0.95, 0.92, 0.6)}</defs>\n'
           '<rect width="480" height="800" fill="url(#bg)"/>\n'
           '<rect width="480" height="800" fill="url(#g1)"/>\n')
    if extra_glow:
        out += '<rect width="480" height="800" fill="url(#g2)"/>\n'
    return out


def main_background():
    arcs = "".join(
        f'<circle cx="520" cy="900" r="{r}" fill="none" stroke="#FFF" stroke-opacity="{o}" stroke-width="1.5"/>'
        for r, o in ((260, 0.05), (300, 0.04), (340, 0.035), (380, 0.03), (420, 0.025)))
    write("MainScreen_bg", 480, 800, background_base() + arcs,
          "Main screen background, also behind the alarm, daily goal and pacer screens.")


def figure(woman):
    # A stylised front view, centred on x 240; faint, behind the four graphs.
    if woman:
        body = ('M240 118 C222 118 212 132 212 150 C212 170 226 182 240 182 C254 182 268 170 268 150 '
                'C268 132 258 118 240 118 Z '
                'M226 184 L254 184 C262 196 282 198 300 206 C314 213 320 228 322 248 L332 372 '
                'C333 384 318 388 314 376 L300 270 L298 300 C296 330 282 350 282 368 '
                'C282 392 304 420 306 452 C308 480 296 500 294 520 L286 700 C285 716 266 716 264 700 L246 528 '
                'L234 528 L216 700 C214 716 195 716 194 700 L186 520 C184 500 172 480 174 452 '
                'C176 420 198 392 198 368 C198 350 184 330 182 300 L180 270 L166 376 C162 388 147 384 148 372 '
                'L158 248 C160 228 166 213 180 206 C198 198 218 196 226 184 Z')
    else:
        body = ('M240 118 C222 118 212 132 212 150 C212 170 226 182 240 182 C254 182 268 170 268 150 '
                'C268 132 258 118 240 118 Z '
                'M224 186 L256 186 C266 198 296 196 318 206 C334 213 340 228 342 248 L350 372 '
                'C351 384 336 388 332 376 L318 272 L306 320 C300 350 296 372 300 400 '
                'C304 430 304 470 298 520 L290 700 C289 716 270 716 268 700 L248 530 '
                'L232 530 L212 700 C210 716 191 716 190 700 L182 520 C176 470 176 430 180 400 '
                'C184 372 180 350 174 320 L162 272 L148 376 C144 388 129 384 130 372 '
                'L138 248 C140 228 146 213 162 206 C184 196 214 198 224 186 Z')
    tape = ""
    for y, half in ((262, 62 if not woman else 58), (352, 52 if not woman else 44), (430, 62 if not woman else 66)):
        tape += (f'<path d="M{240 - half - 8} {y} Q240 {y + 14} {240 + half + 8} {y}" fill="none" stroke="{ACCENT}" '
                 f'stroke-opacity="0.22" stroke-width="3" stroke-dasharray="6 5"/>')
    return (f'<path d="{body}" fill="#FFFFFF" fill-opacity="0.06" stroke="#FFFFFF" stroke-opacity="0.10" '
            f'stroke-width="2" fill-rule="nonzero"/>' + tape)


def body_backgrounds():
    write("Body_bg", 480, 800, background_base(False) + figure(False),
          "Body tracker background for a man: a faint figure with measuring tapes behind the graphs.")
    write("Body_woman_bg", 480, 800, background_base(False) + figure(True),
          "Body tracker background for a woman: a faint figure with measuring tapes behind the graphs.")


def phone(x, y, w=14, h=22, rot=0, col=ACCENT):
    return (f'<g transform="translate({x},{y}) rotate({rot})"><rect x="{-w / 2}" y="{-h / 2}" width="{w}" height="{h}" rx="3" '
            f'fill="{col}" stroke="#FFF" stroke-width="2"/></g>')


def tips(lang):
    t = {
        "en": ("Where to carry your phone",
               ["Trouser pocket", "Belt or waistband", "Armband", "Bag or backpack"],
               [["Best results"], ["Clip it upright"], ["Upper arm, snug"],
                ["Counted well by the", "adaptive step detector"]],
               ["Keep the phone close to your body.",
                "Walk at your usual pace: very slow,",
                "shuffling steps may not be counted."]),
        "de": ("So trägst du dein Telefon",
               ["Hosentasche", "Gürtel oder Bund", "Armband", "Tasche, Rucksack"],
               [["Beste Ergebnisse"], ["Aufrecht anklemmen"], ["Oberarm, straff"],
                ["Gut gezählt mit der", "adaptiven Schritterkennung"]],
               ["Trage das Telefon nah am Körper.",
                "Geh in deinem üblichen Tempo: sehr",
                "langsame, schlurfende Schritte fehlen oft."]),
    }[lang]
    title, cards, notes, lines = t
    out = background_base()
    out += (f'<text x="240" y="62" text-anchor="middle" font-family="{FONT}" font-size="30" font-weight="bold" '
            f'fill="#FFFFFF">{title}</text>'
            f'<rect x="150" y="78" width="180" height="4" rx="2" fill="{ACCENT}"/>')
    pos = [(20, 104), (250, 104), (20, 374), (250, 374)]
    for i, (cx, cy) in enumerate(pos):
        # Every place counts well: on the recorded bag walks the adaptive detector is
        # within 2 % of the true steps.
        out += (f'<rect x="{cx}" y="{cy}" width="210" height="252" rx="16" fill="#0C1322" fill-opacity="0.9" '
                f'stroke="#2A3650" stroke-width="1.5"/>')
        mx = cx + 105
        # the scene
        if i == 0:  # trousers with a phone in the front pocket
            out += (f'<path d="M{mx - 48} {cy + 30} L{mx + 48} {cy + 30} L{mx + 56} {cy + 178} L{mx + 14} {cy + 178} '
                    f'L{mx} {cy + 90} L{mx - 14} {cy + 178} L{mx - 56} {cy + 178} Z" fill="#2A3852" stroke="#FFF" stroke-width="3" stroke-linejoin="round"/>'
                    f'<line x1="{mx - 48}" y1="{cy + 44}" x2="{mx + 48}" y2="{cy + 44}" stroke="#FFF" stroke-width="3"/>'
                    f'<path d="M{mx + 16} {cy + 44} Q{mx + 22} {cy + 72} {mx + 50} {cy + 78}" fill="none" stroke="#FFF" stroke-width="3"/>'
                    + phone(mx + 34, cy + 66, 18, 30, 8))
        elif i == 1:  # waist with a phone clipped on the belt
            out += (f'<path d="M{mx - 52} {cy + 40} C{mx - 40} {cy + 80} {mx - 40} {cy + 120} {mx - 58} {cy + 178} '
                    f'L{mx + 58} {cy + 178} C{mx + 40} {cy + 120} {mx + 40} {cy + 80} {mx + 52} {cy + 40} Z" '
                    f'fill="#2A3852" stroke="#FFF" stroke-width="3" stroke-linejoin="round"/>'
                    f'<rect x="{mx - 56}" y="{cy + 100}" width="112" height="16" fill="#5C4630" stroke="#FFF" stroke-width="2.5"/>'
                    f'<rect x="{mx - 9}" y="{cy + 98}" width="18" height="20" rx="3" fill="none" stroke="{YELLOW}" stroke-width="3"/>'
                    + phone(mx + 34, cy + 108, 22, 36, 0))
        elif i == 2:  # upper arm with an armband
            out += (f'<path d="M{mx - 20} {cy + 28} C{mx - 36} {cy + 60} {mx - 34} {cy + 120} {mx - 22} {cy + 178} '
                    f'L{mx + 22} {cy + 178} C{mx + 30} {cy + 120} {mx + 32} {cy + 60} {mx + 24} {cy + 28} Z" '
                    f'fill="#2A3852" stroke="#FFF" stroke-width="3" stroke-linejoin="round"/>'
                    f'<rect x="{mx - 38}" y="{cy + 78}" width="76" height="24" rx="6" fill="#394152" stroke="#FFF" stroke-width="2.5"/>'
                    + phone(mx, cy + 90, 30, 44, 0))
        else:  # swinging bag
            out += (f'<path d="M{mx - 30} {cy + 40} Q{mx + 10} {cy + 30} {mx + 30} {cy + 96}" fill="none" stroke="#FFF" stroke-width="3"/>'
                    f'<path d="M{mx - 30} {cy + 40} Q{mx - 40} {cy + 80} {mx - 26} {cy + 104}" fill="none" stroke="#FFF" stroke-width="3"/>'
                    f'<g transform="rotate(-14 {mx} {cy + 130})"><rect x="{mx - 46}" y="{cy + 96}" width="92" height="70" rx="12" '
                    f'fill="#2A3852" stroke="#FFF" stroke-width="3"/>'
                    f'<path d="M{mx - 46} {cy + 118} L{mx + 46} {cy + 118}" stroke="#FFF" stroke-width="2.5"/></g>'
                    f'<path d="M{mx + 56} {cy + 112} q10 18 0 36" fill="none" stroke="{YELLOW}" stroke-width="3" stroke-linecap="round"/>'
                    f'<path d="M{mx - 62} {cy + 92} q-10 18 0 36" fill="none" stroke="{YELLOW}" stroke-width="3" stroke-linecap="round"/>')
        # verdict badge
        out += (f'<circle cx="{cx + 186}" cy="{cy + 24}" r="14" fill="#34C77B"/>'
                f'<path d="M{cx + 179} {cy + 24} L{cx + 184} {cy + 29} L{cx + 193} {cy + 19}" fill="none" stroke="#FFF" '
                f'stroke-width="3.5" stroke-linecap="round" stroke-linejoin="round"/>')
        out += (f'<text x="{mx}" y="{cy + 210}" text-anchor="middle" font-family="{FONT}" font-size="19" '
                f'font-weight="bold" fill="#FFFFFF">{cards[i]}</text>')
        note = notes[i]
        for k, text in enumerate(note):
            y = cy + (236 if len(note) == 1 else 232 + 16 * k)
            out += (f'<text x="{mx}" y="{y}" text-anchor="middle" font-family="{FONT}" '
                    f'font-size="{16 if len(note) == 1 else 15}" fill="#9FB3CC">{text}</text>')
    y = 664
    for line in lines:
        out += (f'<text x="240" y="{y}" text-anchor="middle" font-family="{FONT}" font-size="19" '
                f'fill="#D6E2F0">{line}</text>')
        y += 28
    write(f"acc_tips_{lang}", 480, 800, out,
          f"Accelerometer tips ({lang}): where to carry the phone. Shown full screen; the bottom 60 px stay free.")


def app_icon():
    foot = ('<ellipse cx="0" cy="0" rx="13" ry="21" fill="#FFF"/>'
            '<circle cx="-9" cy="-27" r="4.2" fill="#FFF"/><circle cx="-2" cy="-30" r="4.4" fill="#FFF"/>'
            '<circle cx="5.5" cy="-29" r="4" fill="#FFF"/><circle cx="11.5" cy="-25" r="3.4" fill="#FFF"/>'
            '<ellipse cx="1" cy="28" rx="9" ry="8" fill="#FFF"/>')
    write("pedometer-icon", 128, 128,
          f'<defs>{lin("i", [(0, "#45B8FF", None), (1, "#0A5FA8", None)])}</defs>'
          '<rect x="4" y="4" width="120" height="120" rx="28" fill="url(#i)"/>'
          '<rect x="6" y="6" width="116" height="116" rx="26" fill="none" stroke="#FFF" stroke-opacity="0.25" stroke-width="2"/>'
          f'<g transform="translate(48 72) rotate(-12)">{foot}</g>'
          f'<g transform="translate(82 50) rotate(12) scale(-1 1)" opacity="0.85">{foot}</g>',
          "Application icon: two footprints.")


start_stop(); text_buttons(); round_buttons(); caption_buttons(); checkboxes(); slider(); goal_bar()
cells(); history_rows(); top_highlight(); unlock(); main_background(); body_backgrounds(); tips("en"); tips("de"); app_icon()
print(len(os.listdir(OUT)), "files")

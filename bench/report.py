#!/usr/bin/env python3
"""Turns scripts/bench.sh's measurements into the Markdown report.

report.py RESULTS.tsv DATE MACHINE WINDOW_LINE RUNS [STARTUP.tsv SWEEP.tsv PLOT.tsv]
RESULTS.tsv: name, hyperfine JSON, glyphs, peak KiB of glyphwright, of the
baseline, lv_font_conv seconds, lv_font_conv peak KiB (blank when not run),
output bytes.
STARTUP.tsv: shared libraries, hyperfine JSON (--version, bare program),
unwanted libraries found.
SWEEP.tsv: pixel size, hyperfine JSON (glyphwright, baseline), glyphs of each;
PLOT.tsv is written from it: size, ms per 1 000 glyphs of each.
"""
import json
import re
import sys

LIMIT_RATIO = 1.5      # glyphwright / bare FreeType loop, cases 1, 2 and 5
# Tighter limits by case name.
CASE_LIMITS = {"2. IPAGothic 16 px, 4 levels": 1.3}
PEER_FACTOR = 500      # lv_font_conv / glyphwright, cases 1-2
ZGLY_MS = 30           # case 3, ZGLY -> ZGLY
GRID_FACTOR = 5        # case 3, grid round trip / ZGLY -> ZGLY
PEAK_MIB = 64          # cases at 16 px
PEAK_OVER_OUTPUT_MIB = 40
WINDOW_RATIO = 1.1
LIBRARIES = 20
STARTUP_RATIO = 3


def mib(kb):
    return f"{int(kb) / 1024:.1f}" if kb else "–"


def ok(cond):
    return "yes" if cond else "**no**"


def main():
    path, date, machine, window, runs = sys.argv[1:6]
    rows = []
    for line in open(path, encoding="utf-8"):
        name, js, glyphs, gw_kb, base_kb, peer_s, peer_kb, out_bytes = line.rstrip("\n").split("\t")
        res = json.load(open(js, encoding="utf-8"))["results"]
        gw = res[0]
        base = res[1] if len(res) > 1 else None
        rows.append(dict(name=name, glyphs=int(glyphs or 0), gw_ms=gw["median"] * 1000,
                         gw_cpu=(gw["user"] + gw["system"]) * 1000,
                         base_ms=base["median"] * 1000 if base else None,
                         base_cpu=(base["user"] + base["system"]) * 1000 if base else None,
                         peer_s=float(peer_s) if peer_s else None,
                         gw_kb=gw_kb, base_kb=base_kb, peer_kb=peer_kb, out_bytes=int(out_bytes or 0)))

    out = [f"Measured {date} on {machine}; medians of {runs} runs of whole processes, "
           "glyphwright and the bare FreeType loop side by side; lv_font_conv run once.", "",
           "| case | glyphs | glyphwright ms | FreeType ms | × FreeType (wall) | × FreeType (CPU) "
           "| µs/glyph | lv_font_conv s | lv_font_conv ÷ glyphwright | peak MiB glyphwright / FreeType / lv_font_conv "
           "| output MiB |",
           "|---|---:|---:|---:|---:|---:|---:|---:|---:|---|---:|"]
    verdicts = []
    peak_ok = True
    for r in rows:
        ratio = r["gw_ms"] / r["base_ms"] if r["base_ms"] else None
        cpu = r["gw_cpu"] / r["base_cpu"] if r["base_cpu"] else None
        peer = r["peer_s"] * 1000 / r["gw_ms"] if r["peer_s"] else None
        per = r["gw_ms"] * 1000 / r["glyphs"] if r["glyphs"] else None
        out.append("| {} | {} | {:.1f} | {} | {} | {} | {} | {} | {} | {} / {} / {} | {:.1f} |".format(
            r["name"], r["glyphs"] or "–", r["gw_ms"],
            f"{r['base_ms']:.1f}" if r["base_ms"] else "–",
            f"{ratio:.2f}" if ratio else "–", f"{cpu:.2f}" if cpu else "–",
            f"{per:.2f}" if per else "–",
            f"{r['peer_s']:.1f}" if r["peer_s"] else "–", f"{peer:.0f}" if peer else "–",
            mib(r["gw_kb"]), mib(r["base_kb"]), mib(r["peer_kb"]), r["out_bytes"] / 2**20))
        big = r["name"].startswith("5.")
        if r["gw_kb"] and not big and int(r["gw_kb"]) > PEAK_MIB * 1024:
            peak_ok = False
        if big and r["gw_kb"]:
            limit = r["out_bytes"] / 2**20 + PEAK_OVER_OUTPUT_MIB
            verdicts.append(f"- {r['name']}: peak memory ≤ output + {PEAK_OVER_OUTPUT_MIB} MiB: "
                            f"{ok(int(r['gw_kb']) / 1024 <= limit)} ({mib(r['gw_kb'])} MiB for "
                            f"{r['out_bytes'] / 2**20:.1f} MiB of output)")
        if r["name"][:2] in ("1.", "2.", "5.") and ratio:
            lim = next((v for k, v in CASE_LIMITS.items() if r["name"].startswith(k)), LIMIT_RATIO)
            verdicts.append(f"- {r['name']}: ≤ {lim}× FreeType: {ok(ratio <= lim)} ({ratio:.2f}× wall, "
                            f"{cpu:.2f}× CPU)" + (f"; ≥ {PEER_FACTOR}× faster than lv_font_conv: "
                                                  f"{ok(peer >= PEER_FACTOR)} ({peer:.0f}×)" if peer else ""))

    zz = next((r for r in rows if r["name"].startswith("3.") and "rotation" in r["name"]), None)
    grid = [r for r in rows if r["name"].startswith("3.") and "BMP" in r["name"]]
    if zz:
        verdicts.append(f"- ZGLY → ZGLY ≤ {ZGLY_MS} ms: {ok(zz['gw_ms'] <= ZGLY_MS)} ({zz['gw_ms']:.1f} ms)")
    if zz and len(grid) == 2:
        trip = sum(r["gw_ms"] for r in grid)
        verdicts.append(f"- grid round trip ≤ {GRID_FACTOR}× ZGLY → ZGLY: {ok(trip <= GRID_FACTOR * zz['gw_ms'])} "
                        f"({trip:.1f} ms, {trip / zz['gw_ms']:.1f}×)")
    scale = [r for r in rows if r["name"].startswith("4.")]
    if scale:
        per = [r["gw_ms"] * 1000 / r["glyphs"] for r in scale]
        base = [r["base_ms"] * 1000 / r["glyphs"] for r in scale]
        verdicts.append("- cost per glyph with filters of " + ", ".join(str(r["glyphs"]) for r in scale) +
                        " glyphs: " + ", ".join(f"{p:.2f}" for p in per) + " µs (FreeType " +
                        ", ".join(f"{b:.2f}" for b in base) + " µs); above FreeType by " +
                        ", ".join(f"{p - b:.2f}" for p, b in zip(per, base)) + " µs")
    verdicts.append(f"- peak memory ≤ {PEAK_MIB} MiB in every case at 16 px: {ok(peak_ok)}")
    m = re.match(r"window ([\d.]+) ms, silent ([\d.]+) ms, ratio ([\d.]+)", window or "")
    if m:
        verdicts.append(f"- window run of case 2 ≤ {WINDOW_RATIO}× the command line's: "
                        f"{ok(float(m.group(3)) <= WINDOW_RATIO)} ({m.group(1)} ms against {m.group(2)} ms, "
                        f"{float(m.group(3)):.3f}×; in-process, progress bar drawn offscreen)")
    if len(sys.argv) > 6:
        startup(sys.argv[6], verdicts)
    if len(sys.argv) > 8:
        out += sizes(sys.argv[7], sys.argv[8])
    out += ["", "Targets:", ""] + verdicts
    print("\n".join(out))


def startup(path, verdicts):
    fields = open(path, encoding="utf-8").read().rstrip("\n").split("\t")
    libs, js, unwanted = int(fields[0]), fields[1], fields[2] if len(fields) > 2 else ""
    res = json.load(open(js, encoding="utf-8"))["results"]
    gw, bare = res[0]["median"] * 1000, res[1]["median"] * 1000
    verdicts.append(f"- shared libraries of glyphwright-cli ≤ {LIBRARIES}, none of curl, GnuTLS, ICU, LDAP, Kerberos: "
                    f"{ok(libs <= LIBRARIES and not unwanted)} ({libs}" + (f"; {unwanted}" if unwanted else "") + ")")
    verdicts.append(f"- glyphwright-cli --version ≤ {STARTUP_RATIO}× a bare C program linked with FreeType: "
                    f"{ok(gw <= STARTUP_RATIO * bare)} ({gw:.2f} ms against {bare:.2f} ms, {gw / bare:.2f}×)")


def sizes(path, plot):
    rows = ["", "Milliseconds per 1 000 glyphs against the pixel size (IPAGothic, 16 levels, --no-soft-aa; "
            "medians; plotted in out/bench.png):", "",
            "| px | glyphwright ms / 1 000 glyphs | FreeType ms / 1 000 glyphs | × FreeType |", "|---:|---:|---:|---:|"]
    with open(plot, "w", encoding="utf-8") as data:
        data.write("# px glyphwright freetype (ms per 1000 glyphs)\n")
        for line in open(path, encoding="utf-8"):
            px, js, gw_glyphs, base_glyphs = line.rstrip("\n").split("\t")
            res = json.load(open(js, encoding="utf-8"))["results"]
            gw = res[0]["median"] * 1000 * 1000 / int(gw_glyphs)
            base = res[1]["median"] * 1000 * 1000 / int(base_glyphs)
            data.write(f"{px} {gw:.3f} {base:.3f}\n")
            rows.append(f"| {px} | {gw:.1f} | {base:.1f} | {gw / base:.2f} |")
    return rows


if __name__ == "__main__":
    main()

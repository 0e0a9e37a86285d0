#!/usr/bin/env python3
"""Whole glyphwright-cli processes against the yardstick (ftlimit: open the font
file, set the pixel size, load and render every BMP code the font maps), run in
alternating rounds so that both sides see the same machine load; the ratio of
each round, and their median, is what the table shows.

usage: yardstick.py OUT GLYPHWRIGHT-CLI FTLIMIT RUNS SWEEP_RUNS DATE MACHINE
environment: DEJAVU, IPAG (font files), SWEEP_SIZES ("16 24 ...")
Writes the table to stdout and the plot's data to OUT/yardstick.tsv."""
import os
import statistics
import subprocess
import sys
import time

out, gw, ftlimit, runs, sweep_runs, date, machine = sys.argv[1:8]
runs, sweep_runs = int(runs), int(sweep_runs)
dejavu, ipag = os.environ["DEJAVU"], os.environ["IPAG"]
cores = os.cpu_count() or 1

# name, glyphwright's font options (by family name), yardstick font file, px,
# targets (one thread, all cores)
CASES = [
    ("DejaVu Sans 16 px, 16 levels", ["DejaVu Sans", "--size", "16", "--levels", "16"], dejavu, 16, (1.3, 1.0)),
    ("IPAGothic 16 px, 4 levels", ["IPAGothic", "--size", "16", "--levels", "4"], ipag, 16, (1.3, 0.8)),
    ("IPAGothic 96 px, 16 levels", ["IPAGothic", "--size", "96", "--levels", "16"], ipag, 96, (1.3, 0.7)),
]


def run(cmd):
    """Wall seconds, CPU seconds and peak resident KiB of one whole process."""
    start = time.perf_counter()
    p = subprocess.Popen(cmd, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
    _, status, usage = os.wait4(p.pid, 0)
    wall = time.perf_counter() - start
    err = p.stderr.read().decode(errors="replace")
    p.stderr.close()
    if status != 0:
        sys.exit(f"yardstick: {' '.join(cmd)} failed: {err}")
    return wall, usage.ru_utime + usage.ru_stime, usage.ru_maxrss


def commands(font_args, file, px, zgly):
    convert = [gw, "convert", "--quiet", "--from-font", *font_args, "--no-soft-aa", "--to-zgly", zgly]
    return {"ft": [ftlimit, file, str(px)], "one": convert + ["--threads", "1"], "all": convert}


def measure(cmds, rounds):
    """One warm-up round, then `rounds` rounds; the order turns each round."""
    names = list(cmds)
    results = {n: [] for n in names}
    for r in range(rounds + 1):
        order = names[r % len(names):] + names[:r % len(names)]
        for n in order:
            m = run(cmds[n])
            if r > 0:
                results[n].append(m)
    return results


def ratios(results, side):
    return [a[0] / b[0] for a, b in zip(results[side], results["ft"])]


def med_ms(results, side):
    return statistics.median(m[0] for m in results[side]) * 1000


def mib(kib):
    return kib / 1024


rows, verdicts = [], []
for name, font_args, file, px, (t1, tn) in CASES:
    print(f"yardstick: {name}", file=sys.stderr)
    zgly = os.path.join(out, f"yardstick-{px}.zgly")
    res = measure(commands(font_args, file, px, zgly), runs)
    glyphs = subprocess.run([ftlimit, file, str(px)], capture_output=True, text=True).stdout.split()[0]
    r1, rn = statistics.median(ratios(res, "one")), statistics.median(ratios(res, "all"))
    cpu1 = statistics.median(m[1] for m in res["one"]) / statistics.median(m[1] for m in res["ft"])
    peak1, peakn = max(m[2] for m in res["one"]), max(m[2] for m in res["all"])
    output = os.path.getsize(zgly)
    rows.append(f"| {name} | {glyphs} | {med_ms(res, 'ft'):.1f} | {med_ms(res, 'one'):.1f} | **{r1:.2f}×** "
                f"(≤ {t1}) | {cpu1:.2f}× | {med_ms(res, 'all'):.1f} | **{rn:.2f}×** (≤ {tn}) | "
                f"{mib(peak1):.1f} / {mib(peakn):.1f} | {output / 1048576:.1f} |")
    verdicts.append(f"- {name}: one thread {r1:.2f}× ({'met' if r1 <= t1 else 'missed'}, ≤ {t1}), "
                    f"all cores {rn:.2f}× ({'met' if rn <= tn else 'missed'}, ≤ {tn})")
    if px == 96:
        limit = output / 1048576 + 40
        verdicts.append(f"- {name}: peak memory ≤ output + 40 MiB: "
                        f"{'met' if max(peak1, peakn) / 1024 <= limit else 'missed'} "
                        f"({mib(max(peak1, peakn)):.1f} MiB for {output / 1048576:.1f} MiB of output)")
    os.remove(zgly)

sweep = []
for px in os.environ.get("SWEEP_SIZES", "16 24 32 48 64 96").split():
    print(f"yardstick: IPAGothic {px} px", file=sys.stderr)
    zgly = os.path.join(out, f"sweep-{px}.zgly")
    res = measure(commands(["IPAGothic", "--size", px, "--levels", "16"], ipag, int(px), zgly), sweep_runs)
    sweep.append((px, statistics.median(ratios(res, "one")), statistics.median(ratios(res, "all"))))
    os.remove(zgly)
with open(os.path.join(out, "yardstick.tsv"), "w", encoding="utf-8") as data:
    for px, r1, rn in sweep:
        data.write(f"{px}\t{r1:.3f}\t{rn:.3f}\n")

print(f"Measured {date} on {machine}; whole processes by family name, --no-soft-aa, against the "
      f"yardstick ftlimit (the font file, the same pixel size, every BMP code rendered); {runs} alternating "
      f"rounds after one warm-up, ratios are medians of each round's ratio. All cores: {cores}.\n")
print("| case | glyphs | ftlimit ms | --threads 1 ms | × ftlimit | × ftlimit (CPU) | all cores ms | × ftlimit | "
      "peak MiB (1 / all) | output MiB |")
print("|---|---:|---:|---:|---:|---:|---:|---:|---|---:|")
print("\n".join(rows))
print()
print("\n".join(verdicts))
print()
print("Against the pixel size (IPAGothic, 16 levels; plotted in out/bench.png):\n")
print("| px | --threads 1 × ftlimit | all cores × ftlimit |")
print("|---:|---:|---:|")
for px, r1, rn in sweep:
    print(f"| {px} | {r1:.2f} | {rn:.2f} |")

#!/usr/bin/env python3
"""Writes docs/performance.md from what zorbase_bench measured.

usage: report.py RESULTS.json GOALS.json > performance.md

RESULTS.json is what --benchmark_out wrote. Benchmarks are named "subject/who" or "subject/who/size"; who is "library", "plain",
"limit" or another library. GOALS.json lists, by section, which subjects it shows, the ratios to reach, and why one is missed.
"""
import json
import math
import re
import statistics
import sys

NANOSECONDS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}


class Subject:
    """One piece of work at one size: the time of each who for an item, and the counters of the library's runs."""

    def __init__(self, name, size):
        self.name = name
        self.size = size
        self.item_times = {}  # who -> nanoseconds of each repetition, for an item
        self.whole_times = {}  # who -> nanoseconds of each repetition, for the whole work
        self.rates = {}  # counter -> values of the library or the limit

    def title(self):
        return f"{self.name} {self.size}" if self.size is not None else self.name

    def time(self, who):
        return statistics.median(self.item_times[who])

    def ratio(self, who):
        return self.time(who) / self.time("library")


def read_subjects(results):
    subjects = {}
    for run in results["benchmarks"]:
        if run["run_type"] != "iteration" or run.get("error_occurred"):
            continue
        parts = run["run_name"].split("/")
        own_clock = parts[-1] in ("real_time", "manual_time")
        if own_clock:
            parts.pop()
        name, who = parts[0], parts[1]
        size = int(parts[2]) if len(parts) > 2 and parts[2].isdigit() else None
        sized = re.fullmatch(r"(.*:)(\d+)", name)
        if sized:
            name, size = sized.group(1), int(sized.group(2))
        subject = subjects.setdefault((name, size), Subject(name, size))
        whole = run["real_time" if own_clock else "cpu_time"] * NANOSECONDS[run["time_unit"]]
        item = 1e9 / run["items_per_second"] if "items_per_second" in run else whole
        subject.whole_times.setdefault(who, []).append(whole)
        subject.item_times.setdefault(who, []).append(item)
        for counter in ("bytes_per_second", "flops"):
            if counter in run and who in ("library", "limit"):
                subject.rates.setdefault(counter, []).append(run[counter])
    return list(subjects.values())


def time_text(nanoseconds):
    for unit in ("ns", "us", "ms"):
        if nanoseconds < 1000.0:
            return f"{nanoseconds:.3g} {unit}"
        nanoseconds /= 1000.0
    return f"{nanoseconds:.3g} s"


def exponent(points):
    """The slope of log time over log size, by least squares."""
    xs = [math.log(size) for size, _ in points]
    ys = [math.log(time) for _, time in points]
    mean_x, mean_y = statistics.fmean(xs), statistics.fmean(ys)
    return sum((x - mean_x) * (y - mean_y) for x, y in zip(xs, ys)) / sum((x - mean_x) ** 2 for x in xs)


def goal_marks(goals, subjects):
    """Every goal with the ratio measured for it."""
    for goal in goals:
        for subject in subjects:
            if re.fullmatch(goal["subject"], subject.title()) and {"library", goal["who"]} <= subject.item_times.keys():
                yield goal, subject, subject.ratio(goal["who"])


def ratio_table(subjects):
    others = []
    for subject in subjects:
        others += [who for who in subject.item_times if who not in ("library", "limit", *others)]
    others.sort(key=lambda who: who != "plain")
    lines = ["| work | library | " + " | ".join(others) + " |", "|---|" + "---:|" * (len(others) + 1)]
    for subject in subjects:
        cells = [f"{subject.ratio(who):.2f}" if who in subject.item_times else "" for who in others]
        lines.append(f"| {subject.title()} | {time_text(subject.time('library'))} | " + " | ".join(cells) + " |")
    return lines


def growth_lines(subjects):
    by_name = {}
    for subject in subjects:
        if subject.size is not None:
            by_name.setdefault(subject.name, []).append((subject.size, statistics.median(subject.whole_times["library"])))
    return [f"- {name}: exponent {exponent(points):.2f} from {min(points)[0]:,} to {max(points)[0]:,}"
            for name, points in by_name.items() if len({size for size, _ in points}) > 2]


def limit_lines(all_subjects, shown):
    """How far the library's own rates are from what the machine can do at most."""
    copy = [s for s in all_subjects if s.name == "memory copy" and "limit" in s.item_times]
    lines = []
    for subject in shown:
        if copy and "bytes_per_second" in subject.rates:
            limit = statistics.median(max(copy, key=lambda s: s.size).rates["bytes_per_second"])
            rate = statistics.median(subject.rates["bytes_per_second"])
            lines.append(f"- {subject.title()}: {rate / 1e9:.2f} GB/s, {rate / limit:.0%} of a memory copy")
    return lines


def cpu_name():
    with open("/proc/cpuinfo", encoding="ascii", errors="replace") as info:
        for line in info:
            if line.startswith("model name"):
                return line.split(":", 1)[1].strip()
    return "unknown"


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        results = json.load(file)
    with open(sys.argv[2], encoding="utf-8") as file:
        plan = json.load(file)
    subjects = read_subjects(results)
    context = results["context"]

    print("# Performance\n")
    print("Written by `scripts/bench.sh --report` from one run on one machine; nothing here is typed by hand but the reasons.\n")
    print("Each number beside the library's time is another's time in multiples of it: above 1 the library is faster. All of a")
    print("row run in one process on one thread, their repetitions interleaved at random; numbers are ratios of medians of the")
    print("processor time, for an item where the work has items. \"plain\" is the textbook version that the tests hold the")
    print("library against, bit for bit.\n")
    print(f"- Machine: {cpu_name()}, {context['num_cpus']} cores, load {context['load_avg'][0]:.1f} at the start")
    print(f"- Compiler: {context.get('compiler', 'unknown')}; date {context['date'][:10]}")
    for subject in subjects:
        for counter, unit in (("bytes_per_second", "GB/s"), ("flops", "GFlop/s")):
            if "limit" in subject.item_times and counter in subject.rates:
                print(f"- Limit, {subject.title()}: {statistics.median(subject.rates[counter]) / 1e9:.1f} {unit}")
    missed = []
    for section in plan["sections"]:
        shown = [s for s in subjects if "library" in s.item_times and re.match(section["subjects"], s.name)]
        if not shown:
            continue
        print(f"\n## {section['title']}\n")
        print("\n".join(ratio_table(shown)))
        for title, lines in (("How the time grows with the size", growth_lines(shown)),
                             ("Distance to the limit", limit_lines(subjects, shown))):
            if lines:
                print(f"\n{title}:\n\n" + "\n".join(lines))
        for goal, subject, ratio in goal_marks(section.get("goals", []), shown):
            if ratio < goal["ratio"]:
                missed.append(f"| {subject.title()} | {goal['who']} | {goal['ratio']:g} | {ratio:.2f} | {goal.get('why', '')} |")
        for note in section.get("notes", []):
            print(f"\n{note}")
    print("\n## Goals that are not reached\n")
    if missed:
        print("\n".join(["| work | against | goal | measured | why |", "|---|---|---:|---:|---|", *missed]))
    else:
        print("None.")


if __name__ == "__main__":
    main()

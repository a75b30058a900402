#!/usr/bin/env python3
"""Writes docs/performance.md, and the table in README.md, from what zorbase_bench measured.

usage: report.py RESULTS.json GOALS.json PERFORMANCE.md README.md

RESULTS.json is what --benchmark_out wrote. Benchmarks are named "subject/who" or "subject/who/size"; who is "library", "plain",
"limit" or another library. GOALS.json lists, by section, which subjects it shows, the ratios to reach, and why one is missed;
and the ratios that README.md shows between the two markers.
"""
import json
import math
import pathlib
import re
import statistics
import sys

NANOSECONDS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}


class Subject:
    """One piece of work at one size: the time of each who for an item, and the counters of the library's runs."""

    def __init__(self, name, size):
        self.name = name
        self.size = size
        self.place = None  # in the order in which benchmarks are registered
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
        place = (run["family_index"], run["per_family_instance_index"])
        subject.place = min(subject.place or place, place)
        whole = run["real_time" if own_clock else "cpu_time"] * NANOSECONDS[run["time_unit"]]
        item = 1e9 / run["items_per_second"] if "items_per_second" in run else whole
        subject.whole_times.setdefault(who, []).append(whole)
        subject.item_times.setdefault(who, []).append(item)
        for counter in ("bytes_per_second", "flops"):
            if counter in run and who in ("library", "limit"):
                subject.rates.setdefault(counter, []).append(run[counter])
    return sorted(subjects.values(), key=lambda subject: subject.place)


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
    return [f"- {name.rstrip(':')}: exponent {exponent(points):.2f} from {min(points)[0]:,} to {max(points)[0]:,}"
            for name, points in by_name.items() if len({size for size, _ in points}) > 2]


def limits_for(all_subjects, counter, amount):
    """What the machine can do at most: name -> rate. Of several sizes the smallest that holds the amount counts, or the largest."""
    found = {}
    for subject in sorted(all_subjects, key=lambda s: s.size or 0, reverse=True):
        if "limit" in subject.item_times and counter in subject.rates:
            if subject.name not in found or (subject.size or 0) >= amount:
                found[subject.name] = statistics.median(subject.rates[counter])
    return found


def limit_lines(all_subjects, shown):
    """How far the library's own rates are from what the machine can do at most."""
    lines = []
    for subject in shown:
        for counter, rates in subject.rates.items():
            rate = statistics.median(rates)
            amount = rate * statistics.median(subject.whole_times["library"]) * 1e-9
            unit = "GFlop/s" if counter == "flops" else "GB/s"
            shares = [f"{rate / limit:.0%} of {name}" for name, limit in limits_for(all_subjects, counter, amount).items()]
            if shares:
                lines.append(f"- {subject.title()}: {rate / 1e9:.3g} {unit}, {', '.join(sorted(shares))}")
    return lines


def absent_peers(plan, subjects):
    """Those that goals name and nothing measured."""
    measured = {who for subject in subjects for who in subject.item_times}
    named = {goal["who"] for section in plan["sections"] for goal in section.get("goals", [])}
    return sorted(named - measured)


def readme_table(plan, subjects):
    """The lines of the table, or none where not all of it was measured."""
    by_title = {subject.title(): subject for subject in subjects}
    lines = ["| work | the library takes | another takes |", "|---|---:|---:|"]
    for row in plan["readme"]:
        subject = by_title.get(row["subject"])
        if not subject or not {"library", row["who"]} <= subject.item_times.keys():
            return []
        times = subject.whole_times if row.get("whole") else subject.item_times
        own, other = statistics.median(times["library"]), statistics.median(times[row["who"]])
        lines.append(f"| {row['work']} | {time_text(own)} | {row['peer']}: {other / own:.1f} times as long |")
    return lines


def replace_between_markers(text, lines):
    begin, end = "<!-- ratios: written by scripts/bench.sh --report -->", "<!-- end of ratios -->"
    before, rest = text.split(begin)
    return before + begin + "\n" + "\n".join(lines) + "\n" + end + rest.split(end)[1]


def cpu_name():
    with open("/proc/cpuinfo", encoding="ascii", errors="replace") as info:
        for line in info:
            if line.startswith("model name"):
                return line.split(":", 1)[1].strip()
    return "unknown"


def head_lines(context, plan, subjects):
    yield "# Performance\n"
    yield "Written by `scripts/bench.sh --report` from one run on one machine; nothing here is typed by hand but the reasons.\n"
    yield "Each number beside the library's time is another's time in multiples of it: above 1 the library is faster. All of a"
    yield "row run in one process on one thread, their repetitions interleaved at random; numbers are ratios of medians of the"
    yield "processor time, for an item where the work has items. \"plain\" is the textbook version that the tests hold the"
    yield "library against, bit for bit.\n"
    yield f"- Machine: {cpu_name()}, {context['num_cpus']} cores, load {context['load_avg'][0]:.1f} at the start"
    yield f"- Compiler: {context.get('compiler', 'unknown')}; date {context['date'][:10]}"
    for subject in subjects:
        for counter, unit in (("bytes_per_second", "GB/s"), ("flops", "GFlop/s")):
            if "limit" in subject.item_times and counter in subject.rates:
                yield f"- Limit, {subject.title()}: {statistics.median(subject.rates[counter]) / 1e9:.1f} {unit}"
    absent = absent_peers(plan, subjects)
    if absent:
        yield f"- Not installed there, or not asked for in this run, and left out: {', '.join(absent)}"


def section_lines(section, subjects, shown):
    yield f"\n## {section['title']}\n"
    yield from ratio_table(shown)
    for title, lines in (("How the time grows with the size", growth_lines(shown)),
                         ("Distance to the limit", limit_lines(subjects, shown))):
        if lines:
            yield f"\n{title}:\n"
            yield from lines
    for note in section.get("notes", []):
        yield f"\n{note}"


def missed_lines(section, shown):
    for goal in section.get("goals", []):
        marks = list(goal_marks([goal], shown))
        if not marks:
            yield f"| {goal['subject']} | {goal['who']} | {goal['ratio']:g} | not measured | |"
        for _, subject, ratio in marks:
            if ratio < goal["ratio"]:
                yield f"| {subject.title()} | {goal['who']} | {goal['ratio']:g} | {ratio:.2f} | {goal['why']} |"


def report_lines(context, plan, subjects):
    yield from head_lines(context, plan, subjects)
    missed = []
    for section in plan["sections"]:
        shown = [s for s in subjects if "library" in s.item_times and re.match(section["subjects"], s.name)]
        if shown:
            yield from section_lines(section, subjects, shown)
            missed += missed_lines(section, shown)
    yield "\n## Goals that are not reached\n"
    yield from ["| work | against | goal | measured | why |", "|---|---|---:|---:|---|", *missed] if missed else ["None."]


def read_json(name):
    with open(name, encoding="utf-8") as file:
        return json.load(file)


def main():
    results, plan = read_json(sys.argv[1]), read_json(sys.argv[2])
    performance, readme = pathlib.Path(sys.argv[3]), pathlib.Path(sys.argv[4])
    subjects = read_subjects(results)
    report = "\n".join(report_lines(results["context"], plan, subjects)) + "\n"
    table = readme_table(plan, subjects)
    new_readme = replace_between_markers(readme.read_text(encoding="utf-8"), table) if table else None
    performance.write_text(report, encoding="utf-8")
    if new_readme:
        readme.write_text(new_readme, encoding="utf-8")
    else:
        print(f"{readme} stays as it is: not all of its table was measured", file=sys.stderr)


if __name__ == "__main__":
    main()

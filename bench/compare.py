#!/usr/bin/env python3
"""usage: compare.py REACH RESULT.json...  Pairs NAME/ours with NAME/peer and prints their ratio beside the reach."""

import json
import re
import sys

UNIT_NS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def read_reach(path):
    """Lines "NAME SHARE TEXT"; blank lines and comments are skipped."""
    reach = {}
    with open(path, encoding="utf-8") as lines:
        for line in lines:
            if line.strip() and not line.startswith("#"):
                name, share, text = line.split(maxsplit=2)
                reach[name] = (float(share), text.strip())
    return reach


def read_medians(paths):
    """Median time in nanoseconds by the name of the benchmark: that of the processor, or the one that the benchmark took
    itself. The library tells in the name how it measured; that is cut off. An empty result file, as a filter leaves it,
    counts as none."""
    medians = {}
    for path in paths:
        with open(path, encoding="utf-8") as file:
            content = file.read()
        for run in json.loads(content)["benchmarks"] if content else []:
            if run.get("aggregate_name") == "median":
                name, *how = re.split(r"/(?=iterations:|process_time|manual_time)", run["run_name"])
                time = run["real_time" if "manual_time" in how else "cpu_time"]
                medians[name] = time * UNIT_NS[run["time_unit"]]
    return medians


def print_row(name, ours, peer, ratio, reach, verdict):
    print(f"{name:32}{ours:>14}{peer:>14}{ratio:>8}{reach:>8}  {verdict}".rstrip())


def main():
    reach = read_reach(sys.argv[1])
    medians = read_medians(sys.argv[2:])
    pairs = sorted(name[: -len("/ours")] for name in medians if name.endswith("/ours"))
    short = 0
    print_row("name", "ours ns", "peer ns", "ratio", "reach", "")
    for name in pairs:
        ours, peer = medians[name + "/ours"], medians.get(name + "/peer")
        if peer is None:
            sys.exit(f"{name}/ours has no {name}/peer")
        ratio = ours / peer
        share, text = reach.get(name, (None, ""))
        failed = share is not None and ratio > share
        short += failed
        print_row(name, f"{ours:.1f}", f"{peer:.1f}", f"{ratio:.2f}", f"{share:.2f}" if share is not None else "-",
                  "FALLS SHORT: " + text if failed else text)
    for name in sorted(medians):
        if not re.search("/(ours|peer)$", name):
            print_row(name, f"{medians[name]:.1f}", "-", "-", "-", "")
    sys.exit(1 if short else 0)


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Loads our relay, a relay on ws and a bare loop in turn, and prints the medians beside the reach.

usage: scripts/bench --relay [--rounds N] [--only NAME] [--held]

Builds the preset "bench" and expects node with npm to be there. The server runs on the first
processor, the load on the second, and nothing else should run meanwhile. --held shows that 2,000
idle clients and 500 pairs at 60 messages a second each way are held with nothing lost, and fails
if it came to less than that load.
"""

import argparse
import contextlib
import json
import os
import re
import shutil
import statistics
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
BIN = os.path.join(HERE, "..", "..", "build", "bench", "bin")
WIDE = ["--max-connections", "100000", "--max-connections-per-address", "100000",
        "--max-half-open", "10000", "--max-half-open-per-address", "10000",
        "--connects-per-minute", "1000000"]
# The peers have no heartbeat and no limits: ours has them out of the way where they are compared.
UNLIMITED = [*WIDE, "--frames-per-second", "1000000", "--bytes-per-second", "1000000000",
             "--queued-output", "100000000"]
NO_HEARTBEAT = ["--ping-seconds", "43200", "--silence-seconds", "86400"]

# 500 pairs at 60 messages a second each way are 60,000; the rest is for the start and the end.
HELD_RATE = 59000

# Name: the load, its seconds, and who takes part.
LOADS = {
    "open_50": (["open", "50"], 3, ("ours", "ws", "bare")),
    "open_500": (["open", "500"], 3, ("ours", "ws", "bare")),
    "saturated_50": (["saturate", "50"], 2, ("ours", "ws", "bare")),
    "saturated_500": (["saturate", "500"], 2, ("ours", "ws", "bare")),
    "idle_1000": (["idle", "1000"], 1, ("ours", "ws", "bare")),
    "idle_5000": (["idle", "5000"], 5, ("ours",)),
    "undisturbed": (["open", "50"], 4, ("default",)),
    "slow_reader": (["open", "50", "--disturber", "slow"], 4, ("default",)),
    "flood": (["open", "50", "--disturber", "flood"], 4, ("default",)),
}

# Title, the value out of the medians, the most it may be; a negative one is the least.
REACH = [
    ("processor time a message, 50 pairs, to ws",
     lambda m: m["open_50", "ours"]["cpu_us_per_message"] / m["open_50", "ws"]["cpu_us_per_message"],
     0.80),
    ("processor time a message, 500 pairs, to ws",
     lambda m: m["open_500", "ours"]["cpu_us_per_message"] /
     m["open_500", "ws"]["cpu_us_per_message"], 0.75),
    ("messages a second when saturated, 50 pairs, to ws",
     lambda m: m["saturated_50", "ours"]["messages_per_s"] /
     m["saturated_50", "ws"]["messages_per_s"], -1.9),
    ("messages a second when saturated, 500 pairs, to ws",
     lambda m: m["saturated_500", "ours"]["messages_per_s"] /
     m["saturated_500", "ws"]["messages_per_s"], -1.6),
    ("kB for an idle connection, of 1,000", lambda m: m["idle_1000", "ours"]["kb_per_client"], 22),
    ("kB for an idle connection, of 5,000", lambda m: m["idle_5000", "ours"]["kb_per_client"], 22),
    ("ms of processor a second for 5,000 idle clients",
     lambda m: m["idle_5000", "ours"]["cpu_ms_per_s"], 0.5),
    ("MB of base memory", lambda m: m["idle_1000", "ours"]["base_mb"], 10),
    ("99th percentile beside a slow reader, to undisturbed",
     lambda m: m["slow_reader", "default"]["p99_us"] / m["undisturbed", "default"]["p99_us"], 1.2),
    ("99th percentile beside a flood, to undisturbed",
     lambda m: m["flood", "default"]["p99_us"] / m["undisturbed", "default"]["p99_us"], 1.2),
]


def commands(folder):
    own = [os.path.join(BIN, "vork2d-relay"), "--listen", "127.0.0.1:0", "--state-dir", folder]
    files = [os.path.join(folder, "certificate.pem"), os.path.join(folder, "key.pem")]
    return {
        "ours": [*own, *UNLIMITED, *NO_HEARTBEAT],
        "default": [*own, *WIDE],
        "ws": ["node", os.path.join(HERE, "ws", "relay.js"), *files],
        "bare": [os.path.join(BIN, "relay_bare"), *files],
    }


@contextlib.contextmanager
def server(command, log):
    process = subprocess.Popen(["taskset", "-c", "0", *command], stdout=log, stderr=log)
    try:
        with open(log.name, encoding="utf-8") as lines:
            yield process.pid, wait_for_port(process, lines)
    finally:
        process.kill()
        process.wait()


def wait_for_port(process, lines):
    text = ""
    while (found := re.search(r"wss://127\.0\.0\.1:(\d+)/", text)) is None:
        if process.poll() is not None:
            sys.exit("a server ended: " + text)
        text += lines.read()
    return found[1]


def measure(command, load, seconds, more=()):
    with tempfile.NamedTemporaryFile("w") as log, server(command, log) as (pid, port):
        mode, count, *rest = load
        done = subprocess.run(
            ["taskset", "-c", "1", os.path.join(BIN, "relay_load"), mode, port, str(pid), count,
             str(seconds), *rest, *more], capture_output=True, text=True, timeout=300, check=False)
    if not done.stdout:
        sys.exit(f"{command[0]} {load}: {done.stderr}")
    return json.loads(done.stdout)


def build():
    top = os.path.join(HERE, "..", "..")
    for command in (["--preset", "bench"],
                    ["--build", "--preset", "bench", "--target", "vork2d-relay", "relay_load",
                     "relay_bare"]):
        subprocess.run(["cmake", *command], cwd=top, check=True, stdout=subprocess.DEVNULL)


def install_peer():
    if shutil.which("npm") is None:
        sys.exit("node and npm are needed for the peer ws")
    if not os.path.isdir(os.path.join(HERE, "ws", "node_modules", "ws")):
        subprocess.run(["npm", "ci", "--no-audit", "--no-fund"], cwd=os.path.join(HERE, "ws"),
                       check=True)


def run_rounds(all_commands, rounds, only):
    results = {}
    for number in range(rounds):
        for name, (load, seconds, who) in LOADS.items():
            if only and not re.search(only, name):
                continue
            # Another one goes first in each round.
            turn = number % len(who)
            for one in who[turn:] + who[:turn]:
                results.setdefault((name, one), []).append(
                    measure(all_commands[one], load, seconds))
        print(f"round {number + 1} of {rounds}", file=sys.stderr)
    return {key: {field: statistics.median(run[field] for run in runs) for field in runs[0]}
            for key, runs in results.items()}


def print_medians(medians):
    for (name, who), values in medians.items():
        print(f"{name:16}{who:9}" + "  ".join(f"{k} {v:g}" for k, v in values.items()))


def print_reach(medians):
    short = 0
    for title, value, bound in REACH:
        try:
            number = value(medians)
        except KeyError:
            continue
        good = number <= bound if bound > 0 else number >= -bound
        short += not good
        print(f"{title:56}{number:8.2f}   reach {abs(bound):g}   "
              f"{'' if good else 'FALLS SHORT'}".rstrip())
    return short


def main():
    options = argparse.ArgumentParser(description=__doc__,
                                      formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--rounds", type=int, default=5)
    options.add_argument("--only", help="a regular expression over the names of the loads")
    options.add_argument("--held", action="store_true")
    options.add_argument("--no-build", action="store_true", help="take what is built")
    chosen = options.parse_args()
    if not chosen.no_build:
        build()
    with tempfile.TemporaryDirectory() as folder:
        all_commands = commands(folder)
        if chosen.held:
            held = measure(all_commands["default"], ["open", "500"], 20, ["--idle", "2000"])
            print(held)
            sys.exit(held["lost"] != 0 or held["messages_per_s"] < HELD_RATE)
        install_peer()
        measure(all_commands["default"], ["idle", "1"], 0.1)  # makes the certificate for all
        medians = run_rounds(all_commands, chosen.rounds, chosen.only)
    print_medians(medians)
    sys.exit(1 if print_reach(medians) else 0)


if __name__ == "__main__":
    main()

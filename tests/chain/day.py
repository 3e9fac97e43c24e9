"""A day of a chain in short: real tills with real virtual printers, a job for each of them again and again from the centre, while tills,
printers, broker, centre and network are killed and cut at random; then an outage of the broker. In the end the printers' own logs are
compared with what the centre says: each id at most once on paper, each `printed` once, nothing else on it.

    day.py FOLDER_OF_PROGRAMS TILLS SECONDS [--every S] [--outage S] [--calm] [--seed N]

--every: seconds between two jobs of a till. --calm: nothing is killed, for figures.
"""
import argparse
import os
import random
import resource
import signal
import sys
import threading
import time

from chain import Chain, Network, eventually

options = argparse.ArgumentParser()
options.add_argument("programs")
options.add_argument("tills", type=int)
options.add_argument("seconds", type=float)
options.add_argument("--every", type=float, default=10)
options.add_argument("--outage", type=float, default=10)
options.add_argument("--calm", action="store_true")
options.add_argument("--seed", type=int, default=1)
wish = options.parse_args()
dice = random.Random(wish.seed)
counts = dict.fromkeys(("tills", "printers", "power cuts", "broker", "centre", "network"), 0)
asked, first_final, problems = {}, {}, []
over, calm = threading.Event(), threading.Event()


def median(values, share=0.5):
    return sorted(values)[int(share * (len(values) - 1))] if values else float("nan")


def ask_for_jobs(chain, names):
    """Every till's next job when its time has come; the same PUT until it is answered."""
    due = {name: time.monotonic() + dice.uniform(0, wish.every) for name in names}
    while not over.is_set():
        name = min(due, key=due.get)
        if over.wait(max(0, due[name] - time.monotonic())):
            return
        due[name] += wish.every
        number = f"J-{len(asked) + 1}"
        asked[number] = (name, time.monotonic())
        while chain.centre.put(number, f"{name}:caja", patience=60)[0] not in (200, 202, 422):
            time.sleep(0.05)


def is_for_a_person(job):
    """The till was killed before the books had the number of what it opened: nobody but a person ends it."""
    return job.get("state") == "unknown" and job["cause"] == "a document is open"


def follow(chain):
    """When the centre told each job's end first."""
    after = 0
    while not over.is_set() or len(first_final) < len(asked):
        _, part = chain.centre.ask("GET", f"/v1/jobs?after={after}&wait=1")
        for job in part.get("jobs", []):
            if job["state"] in ("printed", "not-printed") or is_for_a_person(job):
                first_final.setdefault(job["id"], time.monotonic())
        after = part.get("revision", after)
        if not part:
            time.sleep(0.1)
        if over.is_set() and time.monotonic() > follow.end:
            return


def misfortunes(chain, tills, networks):
    names = list(tills)
    while not calm.wait(dice.uniform(0.5, 2)):
        what = dice.choice(["tills"] * 4 + ["printers", "power cuts", "broker", "centre", "network"])
        name = dice.choice(names)
        counts[what] += 1
        if what == "tills":
            tills[name].stop()
            tills[name].start()
        elif what == "printers":
            chain.kill_printer(name)
            chain.printer(name)
        elif what == "power cuts":
            chain.tell(name, f"fault power-cut=0.5 on {dice.choice(['open', 'item', 'payment', 'close'])}")
        elif what == "broker":
            chain.broker.kill()
            chain.broker.start()
        elif what == "centre":
            chain.centre.stop(dice.choice([signal.SIGKILL, signal.SIGTERM]))
            chain.centre.start()
        else:
            network = dice.choice(networks)
            network.cut()
            time.sleep(dice.uniform(0, 1))
            network.delay = dice.choice([0, 0.05, 0.3])
            network.mend()


def outage(chain):
    """Seconds from the broker's return until every job has its end."""
    chain.broker.kill()
    time.sleep(wish.outage)
    over.set()
    chain.broker.start()
    begin = time.monotonic()
    return time.monotonic() - begin if eventually(lambda: len(first_final) == len(asked), 300) else None


def used(process):
    """Bytes of memory that are its own share, and processor seconds."""
    with open(f"/proc/{process.pid}/smaps_rollup", encoding="utf-8") as file:
        memory = next(int(line.split()[1]) * 1024 for line in file if line.startswith("Pss:"))
    with open(f"/proc/{process.pid}/stat", encoding="utf-8") as file:
        times = file.read().rsplit(")", 1)[1].split()
    return memory, (int(times[11]) + int(times[12])) / os.sysconf("SC_CLK_TCK")


def judge(chain, names):
    on_paper = [(name, text) for name in names for text in chain.papers(name)]
    jobs = {job["id"]: job for job in chain.centre.all_jobs()}
    states = dict.fromkeys(("printed", "not-printed", "unknown"), 0)
    for number, (name, _) in asked.items():
        state = jobs.get(number, {}).get("state")
        papers = on_paper.count((name, number))
        states[state] = states.get(state, 0) + 1
        is_known = state in ("printed", "not-printed") or is_for_a_person(jobs.get(number, {}))
        if not is_known or papers != (state == "printed"):
            problems.append(f"{number} of {name} is {state}, and stands {papers} times on paper: {jobs.get(number)}")
    if len(on_paper) != states["printed"]:
        problems.append(f"{len(on_paper)} documents on paper, {states['printed']} printed")
    return states


def main():
    most = resource.getrlimit(resource.RLIMIT_NOFILE)[1]
    resource.setrlimit(resource.RLIMIT_NOFILE, (most, most))
    chain = Chain(os.path.abspath(wish.programs))
    try:
        networks = [Network(chain.broker.port) for _ in range(4)]
        names = [f"t{number:04}" for number in range(1, wish.tills + 1)]
        tills = {}
        for place, name in enumerate(names):  # every fifth by a network that fails
            port = networks[place % 4].port if place % 5 == 0 and not wish.calm else None
            tills[name] = chain.till(name, listens=False, port=port, spread=60 if wish.calm else 4)
            tills[name].start()
        chain.centre.start()
        assert eventually(lambda: sum(till["online"] for till in chain.centre.ask("GET", "/v1/tills")[1].get("tills", [])) == len(names), 120)
        before = {name: used(till.process)[1] for name, till in tills.items()}
        centre_before, begin = used(chain.centre.process)[1], time.monotonic()
        follow.end = begin + wish.seconds + wish.outage + 320
        threads = [threading.Thread(target=ask_for_jobs, args=(chain, names)), threading.Thread(target=follow, args=(chain,))]
        trouble = threading.Thread(target=misfortunes, args=(chain, tills, networks))
        for thread in threads:
            thread.start()
        if not wish.calm:
            trouble.start()
        time.sleep(wish.seconds)
        waits = [first_final[number] - asked[number][1] for number in list(first_final) if number in asked]
        if wish.calm:
            span = time.monotonic() - begin
            shares = [used(till.process) for till in tills.values()]
            print(f"  memory of a till {median([memory for memory, _ in shares]) / 1e6:.1f} MB, of the centre "
                  f"{used(chain.centre.process)[0] / 1e6:.1f}, of the broker {used(chain.broker.process)[0] / 1e6:.1f}; processor of a till "
                  f"{100 * median([time_ - before[name] for name, (_, time_) in zip(tills, shares)]) / span:.2f} %, of the centre "
                  f"{100 * (used(chain.centre.process)[1] - centre_before) / span:.2f} %")
        else:
            calm.set()
            trouble.join()
        seconds = outage(chain)
        for thread in threads:
            thread.join()
        if seconds is None:
            problems.append("not every job has its end")
        states = judge(chain, names)
        print(f"  {len(names)} tills, {len(asked)} jobs ({len(asked) / wish.seconds:.1f} a second): {states}; killed and cut: {counts}")
        print(f"  from the PUT to the end at the centre: p50 {median(waits):.2f} s, p99 {median(waits, 0.99):.2f} s; "
              f"all in {seconds if seconds is None else round(seconds, 1)} s after {wish.outage:.0f} s without a broker")
    finally:
        over.set()
        calm.set()
        chain.end()
    for problem in problems[:20]:
        print(f"  FAILED {problem}")
    print(f"{len(asked) - len(problems)} passed, {len(problems)} failed")
    sys.exit(1 if problems else 0)


main()

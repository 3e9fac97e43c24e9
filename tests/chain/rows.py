"""What can happen to a chain, one misfortune after the other, on a real broker: each document once on paper, and what came of it at
the centre.

    rows.py FOLDER_OF_PROGRAMS [NAME...]
"""
import json
import os
import shutil
import signal
import socket
import sys
import time
import traceback

from chain import Chain, End, Network, eventually, sale

PROGRAMS = os.path.abspath(sys.argv[1])


def started(chain, name="tienda1", **more):
    till = chain.till(name, **more).start()
    if not chain.centre.process:
        chain.centre.start()
    assert chain.is_ready(name), chain.centre.said()
    return till


def a_job_goes_to_its_till_and_figures_come_back(chain):
    till = started(chain)
    job = prints(chain, "J-1")
    assert (job["number"], job["machine"]) == (1, "TIENDA1"), job
    code, z = chain.centre.ask("PUT", "/v1/jobs/Z-1?wait=30", {"printer": "tienda1:caja", "closing": "Z"})
    assert (code, z["state"], z["figures"]["sales"]["base1"]) == (200, "printed", "10.00"), z
    assert till.put("F-1", "caja", 30)[1]["state"] == "printed"
    assert chain.centre.becomes("tienda1:F-1", "printed"), "what a shop prints by itself is seen at the centre"
    assert chain.centre.put("J-2", "tienda9:caja")[0] == 422, "a till that nobody knows"
    assert chain.centre.ask("GET", "/v1/printers/tienda1:caja/day")[0] == 501
    assert chain.centre.put("J-3", "tienda1:caja", 30, machine="OTHER")[1]["verdict"] == "other-machine"
    prints(chain, "J-3", attempt=2)
    assert till.job("J-3")["attempt"] == 2, "both ends count attempts alike"
    at_the_till = lambda: till.ask("GET", "/health")[1]["chain"]
    assert eventually(lambda: at_the_till()["behind"] == 0), at_the_till()
    chain.broker.kill()
    assert eventually(lambda: not at_the_till()["connected"]), at_the_till()
    assert till.put("F-2", "caja", 30)[1]["state"] == "printed"
    assert eventually(lambda: at_the_till()["behind"] > 0), at_the_till()
    at_the_centre = lambda: chain.centre.ask("GET", "/health")[1]["chain"]
    assert eventually(lambda: not at_the_centre()["connected"]) and at_the_centre()["since"] and at_the_centre()["tills"] == 1, at_the_centre()
    said = [end.metrics() for end in (till, chain.centre)]
    assert "zentaro_chain_behind" in said[0] and all("zentaro_chain_connected 0\n" in text for text in said), said
    chain.broker.start()
    assert eventually(lambda: at_the_centre()["online"] == 1 and at_the_till()["behind"] == 0), (at_the_centre(), at_the_till())
    assert "zentaro_tills_online 1\n" in chain.centre.metrics()


def prints(chain, number, **more):
    code, job = chain.centre.put(number, "tienda1:caja", 40, **more)
    assert (code, job["state"]) == (200, "printed"), job
    return job


def an_attempt_may_go_to_another_till(chain):
    started(chain)
    other = started(chain, "tienda2")
    assert chain.centre.put("J-1", "tienda1:caja", 30, machine="OTHER")[1]["state"] == "not-printed"
    assert chain.centre.put("J-1", "tienda2:caja", 30, attempt=2)[1]["state"] == "printed"
    assert other.job("J-1")["attempt"] == 2
    assert chain.centre.put("J-1", "tienda1:caja", 5, attempt=3)[1]["attempt"] == 2
    assert (chain.papers("tienda1"), chain.papers("tienda2")) == ([], ["J-1"])


def the_broker_is_down_and_the_shop_works(chain):
    till = started(chain)
    chain.broker.kill()
    assert [till.put(f"F-{n}", "caja", 30)[1]["state"] for n in range(60)] == ["printed"] * 60
    assert chain.centre.put("J-1", "tienda1:caja")[0] == 202
    chain.broker.start()  # without anything that it knew
    assert chain.centre.becomes("J-1", "printed")
    assert chain.centre.becomes("tienda1:F-59", "printed")
    jobs = [job["id"] for job in chain.centre.all_jobs()]
    assert sorted(jobs) == sorted(["J-1"] + [f"tienda1:F-{n}" for n in range(60)]), jobs
    assert sorted(chain.papers("tienda1")) == sorted(["J-1"] + [f"F-{n}" for n in range(60)])


def a_job_that_comes_three_times_is_printed_once(chain):
    started(chain)
    text = json.dumps({"id": "J-1", "printer": "caja", "attempt": 1, "patience": 60,
                       "body": json.dumps({"printer": "tienda1:caja", "sale": sale("J-1")})})
    for _ in range(3):
        chain.broker.say("zentaro/1/tienda1/jobs", text)
    for rubbish in ("", "{", "[]", '{"id":"J-2"}', text.replace('"attempt": 1', '"attempt": -1')):
        chain.broker.say("zentaro/1/tienda1/jobs", rubbish)
        chain.broker.say("zentaro/1/tienda1/results", rubbish)
        chain.broker.say("zentaro/1/tienda1/seen", rubbish)
    prints(chain, "J-1")
    assert chain.papers("tienda1") == ["J-1"]
    prints(chain, "J-2")


def a_till_that_is_offline_gets_it_later_or_says_that_it_is_too_late(chain):
    till = started(chain)
    till.stop(signal.SIGTERM)
    assert eventually(lambda: not chain.online("tienda1")["online"])
    assert chain.centre.put("J-1", "tienda1:caja", patience=100)[1]["state"] == "queued"
    assert chain.centre.put("J-2", "tienda1:caja", patience=2)[1]["state"] == "queued"
    assert chain.centre.put("J-3", "tienda1:caja")[1]["state"] == "queued"
    assert chain.centre.ask("DELETE", "/v1/jobs/J-3")[1]["verdict"] == "withdrawn"
    time.sleep(3)
    assert chain.centre.job("J-2")["state"] == "queued", "nobody but the till says that it was not printed"
    till.start()
    assert chain.centre.becomes("J-1", "printed")
    assert chain.centre.becomes("J-2", "not-printed")
    assert chain.centre.job("J-2")["verdict"] == "expired"
    assert till.job("J-2")["verdict"] == "expired", "a copy with more patience finds its end there"
    assert chain.papers("tienda1") == ["J-1"]


def silence_is_unknown(chain):
    till = started(chain)
    chain.tell("tienda1", "fault delay=1 on item")
    chain.centre.put("J-1", "tienda1:caja", patience=5)
    assert chain.centre.becomes("J-1", "printing")
    till.process.send_signal(signal.SIGSTOP)
    assert chain.centre.becomes("J-1", "unknown", patience=90), chain.centre.job("J-1")
    assert chain.centre.ask("PUT", "/v1/jobs/J-1/finding", {"printed": False})[0] == 409, "the paper is at the till"
    assert chain.centre.put("J-1", "tienda1:caja", attempt=2)[1]["type"] == "not-final"
    till.process.send_signal(signal.SIGCONT)
    assert chain.centre.becomes("J-1", "printed", "not-printed"), chain.centre.job("J-1")
    assert len(chain.papers("tienda1")) == (chain.centre.job("J-1")["state"] == "printed")


def each_end_is_killed_at_any_moment(chain):
    till = started(chain)
    for number, (victim, pause) in enumerate((v, p) for v in ("till", "centre", "broker") for p in (0.02, 0.3, 0.8)):
        chain.tell("tienda1", "fault delay=0.4 on item")
        chain.centre.put(f"J-{number}", "tienda1:caja")
        time.sleep(pause)
        end = {"till": till, "centre": chain.centre}.get(victim)
        if end:
            end.stop()
            end.start()
        else:
            chain.broker.kill()
            chain.broker.start()
        if chain.centre.becomes(f"J-{number}", "printed", "not-printed", "unknown") and chain.centre.job(f"J-{number}")["state"] == "unknown":
            till.stop()  # killed while it opened the document: it is nobody's, and a person ends it
            till.run("call", "--device", f"{chain.folder}/tienda1.tty", "CancelarComprobante")
            till.start()
        assert chain.centre.becomes(f"J-{number}", "printed", "not-printed"), (victim, pause, chain.centre.job(f"J-{number}"))
    papers = chain.papers("tienda1")
    jobs = chain.centre.all_jobs()
    assert len(jobs) == 9, jobs
    for job in jobs:
        assert papers.count(job["id"]) == (job["state"] == "printed"), (job, papers)
        assert till.job(job["id"])["state"] == job["state"]


def two_tills_with_one_name(chain):
    till = started(chain)
    prints(chain, "J-0")
    till.stop(signal.SIGTERM)
    shutil.copytree(till.folder, f"{chain.folder}/clone")
    till.start()
    clone = chain.till("tienda1", printer="otra", folder="clone", listens=False).start()
    assert eventually(lambda: chain.online("tienda1").get("blocked") == "two-with-one-name", 90), chain.centre.said()
    chain.centre.put("J-1", "tienda1:caja", machine="TIENDA1")
    assert chain.centre.becomes("J-1", "printed", "not-printed")
    assert chain.papers("otra") == []
    clone.stop()


def the_broker_refuses_a_letter(chain):
    acl = f"{chain.folder}/acl"
    with open(acl, "w", encoding="utf-8") as file:
        file.write("topic read #\npattern write zentaro/1/%c/results\npattern write zentaro/1/%c/status\ntopic write zentaro/1/+/seen\n")
    chain.broker.kill()
    chain.broker.configure(f"acl_file {acl}")
    chain.broker.start()
    started(chain)
    chain.centre.put("J-1", "tienda1:caja")
    assert eventually(lambda: chain.online("tienda1")["blocked"] == "refused-by-broker"), chain.centre.said()
    assert eventually(lambda: "zentaro/1/tienda1/jobs: Not authorized" in chain.centre.said()), chain.centre.said()
    with open(acl, "a", encoding="utf-8") as file:
        file.write("topic write zentaro/1/+/jobs\n")
    chain.broker.process.send_signal(signal.SIGHUP)
    assert chain.centre.becomes("J-1", "printed")
    assert chain.papers("tienda1") == ["J-1"]


def restored(chain, end, meanwhile=lambda: None):
    """An end whose disk is that of before the second job, until it has noticed."""
    prints(chain, "J-1")
    end.stop(signal.SIGTERM)
    shutil.copytree(end.folder, f"{chain.folder}/backup")
    end.start()
    assert chain.is_ready("tienda1")
    prints(chain, "J-2")
    meanwhile()
    end.stop()
    shutil.rmtree(end.folder)
    shutil.copytree(f"{chain.folder}/backup", end.folder)
    end.start()
    assert eventually(lambda: chain.online("tienda1").get("blocked") == "books-older"), end.said()


def accepted(chain, end):
    end.run("serve", "accept-books")
    assert chain.centre.becomes("J-3", "printed")
    assert chain.centre.becomes("tienda1:F-1", "printed"), "the till sends again"
    assert sorted(chain.papers("tienda1")) == ["F-1", "J-1", "J-2", "J-3"]


def the_centres_disk_is_restored(chain):
    till = started(chain)

    def the_shop_sells():
        assert till.put("F-1", "caja", 30)[1]["state"] == "printed"
        assert chain.centre.becomes("tienda1:F-1", "printed")
        time.sleep(2.5)  # until the till was told
    restored(chain, chain.centre, the_shop_sells)
    assert chain.centre.put("J-3", "tienda1:caja", 3)[1]["state"] == "queued", "nothing is sent"
    accepted(chain, chain.centre)
    prints(chain, "J-2")
    assert len(chain.papers("tienda1")) == 4


def a_tills_disk_is_restored(chain):
    till = started(chain)
    restored(chain, till)
    assert chain.centre.put("J-3", "tienda1:caja", 3)[1]["state"] in ("queued", "printing")
    assert till.put("F-1", "caja", 30)[1]["state"] == "printed", "the shop goes on"
    accepted(chain, till)


def tills_that_one_outage_cut_come_back_one_by_one(chain):
    names = [f"t{number}" for number in range(12)]
    tills = [chain.till(name, listens=False, printer="t", spread=24).start() for name in names]
    assert eventually(lambda: all("chain: connected" in till.said() for till in tills))
    chain.broker.kill()
    time.sleep(2)
    chain.broker.start()
    begin, back = time.monotonic(), {}

    def all_are_back():
        for till in tills:
            if till.said().count("chain: connected") == 2:
                back.setdefault(till.name, time.monotonic() - begin)
        return len(back) == len(tills)
    assert eventually(all_are_back), back
    assert max(back.values()) - min(back.values()) > 8, back


def a_till_ends_though_the_broker_drops_its_packets(chain):
    with socket.socket() as full:  # its queue of connections is: what comes then is not answered
        full.bind(("127.0.0.1", 0))
        full.listen(0)
        inside = [socket.socket() for _ in range(4)]
        for one in inside:
            one.setblocking(False)
            one.connect_ex(full.getsockname())
        till = chain.till("tienda1", port=full.getsockname()[1]).start()
        assert till.put("F-1", "caja", 30)[1]["state"] == "printed", "the shop does not wait for it"
        till.process.send_signal(signal.SIGTERM)
        till.process.wait(15)
        assert till.process.returncode == 0
        till.process = None


def the_network_is_slow_and_cut(chain):
    network = Network(chain.broker.port)
    till = started(chain, port=network.port)
    network.delay = 0.2
    for number in range(6):
        chain.centre.put(f"J-{number}", "tienda1:caja")
        till.put(f"F-{number}", "caja", 30)
        if number % 2:
            network.cut()
            time.sleep(0.5)
            network.mend()
    for number in range(6):
        assert chain.centre.becomes(f"J-{number}", "printed"), chain.centre.job(f"J-{number}")
        assert chain.centre.becomes(f"tienda1:F-{number}", "printed")
    assert len(chain.centre.all_jobs()) == len(chain.papers("tienda1")) == 12


ROWS = [a_job_goes_to_its_till_and_figures_come_back, an_attempt_may_go_to_another_till, the_broker_is_down_and_the_shop_works,
        a_job_that_comes_three_times_is_printed_once, a_till_that_is_offline_gets_it_later_or_says_that_it_is_too_late,
        silence_is_unknown, each_end_is_killed_at_any_moment, two_tills_with_one_name, the_broker_refuses_a_letter,
        the_centres_disk_is_restored, a_tills_disk_is_restored, tills_that_one_outage_cut_come_back_one_by_one,
        a_till_ends_though_the_broker_drops_its_packets, the_network_is_slow_and_cut]

failed = 0
wanted = [row for row in ROWS if not sys.argv[2:] or row.__name__ in sys.argv[2:]]
for row in wanted:
    begin, chain = time.monotonic(), Chain(PROGRAMS)
    try:
        row(chain)
        print(f"good: {row.__name__.replace('_', ' ')} ({time.monotonic() - begin:.0f} s)", flush=True)
    except Exception:  # pylint: disable=broad-except
        failed += 1
        print(f"FAILED: {row.__name__}\n{traceback.format_exc()}", flush=True)
        for end in chain.ends:
            print(f"--- {end.name}\n{end.said()[-1500:] if os.path.exists(end.folder + '/log') else ''}", flush=True)
    finally:
        chain.end()
print(f"{len(wanted) - failed} passed, {failed} failed")
sys.exit(1 if failed else 0)

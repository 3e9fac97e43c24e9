"""What the proofs of the service and of the chain share: asking `zentaro serve`, telling a virtual printer, and its papers."""
import http.client
import json
import socket
import time
import urllib.error
import urllib.request


def free_port():
    with socket.socket() as free:
        free.bind(("127.0.0.1", 0))
        return free.getsockname()[1]


def eventually(holds, patience=60):
    end = time.monotonic() + patience
    while time.monotonic() < end:
        if holds():
            return True
        time.sleep(0.1)
    return bool(holds())


def ask(port, token, method, path, body=None, patience=70):
    """The code and the JSON of the answer; (None, {}) without one, or with a part of one."""
    request = urllib.request.Request(f"http://127.0.0.1:{port}{path}", method=method,
                                     data=None if body is None else json.dumps(body).encode(),
                                     headers={"Authorization": f"Bearer {token}", "Content-Type": "application/json"})
    try:
        try:
            with urllib.request.urlopen(request, timeout=patience) as answer:
                return answer.status, json.load(answer)
        except urllib.error.HTTPError as error:
            return error.code, json.load(error)
    except (OSError, http.client.HTTPException, ValueError):
        return None, {}


def tell(control, line):
    with socket.socket(socket.AF_UNIX) as client:
        client.connect(control)
        client.sendall(line.encode() + b"\n")
        return client.recv(4096).decode()


def papers(log):
    """The last item of every document that the printer counted, by its own log."""
    found, text = [], None
    with open(log, encoding="utf-8") as lines:
        for line in lines:
            event = json.loads(line) if line.endswith("\n") else {"event": ""}
            if event["event"] == "command" and event["name"] == "item":
                text = event["fields"][0]
            if event["event"] == "answer" and event["name"] == "close" and len(event["fields"]) > 1 and event["fields"][0].isdigit():
                found.append(text)
    return found

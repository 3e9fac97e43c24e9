"""Sells through `zentaro serve`, and asks again under the same id until it is known what came of it.

    ZENTARO_TOKEN=zt_... python3 sell.py http://127.0.0.1:8211 caja1 F-000123
"""
import json
import os
import sys
import time
import urllib.error
import urllib.request

service, printer, job_id = sys.argv[1:]
SALE = {
    "document": "invoice",
    "lines": [{"description": "Arepa", "price": 10, "quantity": 2, "tax": 16}],
    "payments": [{"amount": 30}],
}


def sell(attempt):
    body = json.dumps({"printer": printer, "attempt": attempt, "sale": SALE}).encode()
    headers = {"Authorization": f"Bearer {os.environ['ZENTARO_TOKEN']}", "Content-Type": "application/json"}
    while True:
        request = urllib.request.Request(f"{service}/v1/jobs/{job_id}?wait=20", body, headers, method="PUT")
        try:
            with urllib.request.urlopen(request, timeout=60) as answer:
                job = json.load(answer)
            if job["state"] in ("printed", "not-printed"):
                return job
        except urllib.error.HTTPError as error:
            if error.code < 500 and error.code != 429:
                raise SystemExit(json.load(error)["detail"]) from error
        except OSError:
            pass  # no answer: the same once more, nothing prints twice
        time.sleep(1)


sold = sell(1)
print(f"printed {sold['number']}, total {sold['total']}" if sold["state"] == "printed" else f"not printed: {sold['cause']}")

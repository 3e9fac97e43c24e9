"""Sells by the service, twice under one id, which prints once.   service_client.py URL TOKEN SALE.json ID NUMBER"""
import json
import sys
import time
import urllib.error
import urllib.request

url, token, sale, name, number = sys.argv[1:]
with open(sale, encoding="utf-8") as file:
    body = json.dumps({"printer": "caja1", "sale": json.load(file)}).encode()
headers = {"Authorization": "Bearer " + token, "Content-Type": "application/json"}
deadline = time.monotonic() + 60
for _ in range(2):
    while True:
        request = urllib.request.Request(f"{url}/v1/jobs/{name}?wait=60", body, headers, method="PUT")
        try:
            job = json.load(urllib.request.urlopen(request, timeout=90))
            break
        except urllib.error.HTTPError as error:
            sys.exit(f"{error.code}: {error.read().decode()}")
        except OSError as error:  # it is still starting
            if time.monotonic() > deadline:
                sys.exit(str(error))
            time.sleep(0.1)
    assert (job["state"], int(job["number"])) == ("printed", int(number)), job

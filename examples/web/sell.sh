#!/usr/bin/env bash
# Sells through `zentaro serve`, and asks again under the same id until it is known what came of it.
#
#     ZENTARO_TOKEN=zt_... ./sell.sh http://127.0.0.1:8211 caja1 F-000123
set -uo pipefail

body='{"printer": "'$2'", "attempt": 1, "sale": {"document": "invoice",
  "lines": [{"description": "Arepa", "price": 10, "quantity": 2, "tax": 16}], "payments": [{"amount": 30}]}}'

member() { grep -o "\"$1\":\"*[^\",}]*" <<<"$answer" | head -1 | sed 's/.*:"*//'; }

while true; do
  # The last line is the status; 000 is no answer: the same once more, nothing prints twice.
  answer=$(curl -s --max-time 60 -w '\n%{http_code}' -X PUT "$1/v1/jobs/$3?wait=20" -d "$body" \
                -H "Authorization: Bearer $ZENTARO_TOKEN" -H "Content-Type: application/json")
  case ${answer##*$'\n'} in
    2??) [[ $(member state) == *printed ]] && break ;;
    000 | 5?? | 429) ;;
    *) echo "$answer" >&2 && exit 1 ;;
  esac
  sleep 1
done
if [ "$(member state)" = printed ]; then echo "printed $(member number), total $(member total)"; else echo "not printed: $(member cause)"; fi

# Sourced by scripts/test-proof and scripts/soak: building and running the proofs of fuzz/.
wanted=" ${*:-} "
passed=0 failed=0

# quietly COMMAND...: the end of what it says is shown only when it fails.
quietly() {
  local said
  said=$("$@" 2>&1) || { tail -n 40 <<<"$said" >&2; return 1; }
}

# The release build is what is measured and disturbed; the fuzzing programs are built under ASan and UBSan, the threads also under
# ThreadSanitizer.
build_proofs() {
  quietly cmake --preset release -DZENTARO_BUILD_TESTS=ON -Wno-dev
  quietly cmake --build --preset release --target zentaro-command --target zentaro-printer --target zentaro-bench --target proofs --target till_test
  quietly cmake --preset fuzz -Wno-dev
  quietly cmake --build --preset fuzz
  quietly cmake --preset tsan -Wno-dev
  quietly cmake --build --preset tsan --target proof-threads --target proof-tills --target zentaro-printer
}

is_wanted() { [ "$wanted" = "  " ] || [[ $wanted == *" $1 "* ]]; }

# proof NAME COMMAND...: runs it if it is wanted, shows what it says, and counts.
proof() {
  local name=$1 begin=$SECONDS; shift
  is_wanted "$name" || return 0
  echo "== $name"
  if "$@"; then passed=$((passed + 1)); else failed=$((failed + 1)); echo "FAILED: $name"; fi
  echo "   $((SECONDS - begin)) s"
}

# beside NAME COMMAND...: begins it beside the proofs that follow, which mostly wait; "proof NAME ended" waits for its end.
beside() {
  is_wanted "$1" || return 0
  nice "${@:2}" >build/beside.log 2>&1 &
  beside=$!
}
ended() {
  local status=0
  wait "$beside" || status=$?
  cat build/beside.log
  return $status
}

# together sessions SEEDS DOCUMENTS [realtime]: days of so many seeds at the same time; they mostly wait.
together() {
  local seed job status=0 jobs=()
  for ((seed = 1; seed <= $2; ++seed)); do build/release/bin/proof-"$1" $seed "${@:3}" & jobs+=($!); done
  for job in "${jobs[@]}"; do wait "$job" || status=1; done
  return $status
}

verdict() { echo "$passed passed, $failed failed"; [ $failed = 0 ]; }

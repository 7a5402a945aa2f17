# shellcheck shell=bash
# Steps that take their time, several at once, with a line that tells how far they are. Sourced by scripts
# that name a folder for the steps' logs in `stage_logs`.
# shellcheck disable=SC2154

declare -A stage_process=() stage_title=() stage_usual=() stage_started=() stage_counter=()

# start_stage NAME TITLE SECONDS COMMAND...: starts a step, which on a quiet machine of two processors
# usually takes so long. TITLE says what it does.
start_stage() {
  local name=$1
  stage_title[$name]=$2 stage_usual[$name]=$3 stage_started[$name]=$SECONDS
  shift 3
  # In a process group of its own, so that it can be ended with all that it started.
  set -m
  "$@" </dev/null >"$stage_logs/$name" 2>&1 &
  set +m
  stage_process[$name]=$!
}

# start_build NAME TITLE SECONDS PRESET TARGET...: the same for what is to be built. Compilers, of which there is one
# for each processor, give way to what can only do one thing after the other.
start_build() {
  stage_counter[$1]=$root/build/$4.log
  start_stage "${@:1:3}" nice -n 10 "$root/tools/lib/build_preset" "${@:4}"
}

# What a step does and for how long, and of how many things that it counts how many are done.
stage_progress() {
  local counted=''
  if [ -n "${stage_counter[$1]-}" ]; then
    counted=$(sed -n 's/^\[\([0-9]*\)\/\([0-9]*\)\].*/\1 of \2, /p' "${stage_counter[$1]}" 2>/dev/null |
      tail -n 1) || true
  fi
  printf '%s: %s%d s of usually %d' "${stage_title[$1]}" "$counted" \
    "$((SECONDS - stage_started[$1]))" "${stage_usual[$1]}"
}

show_stages() {
  local name line=''
  for name in "${!stage_process[@]}"; do
    ! kill -0 "${stage_process[$name]}" 2>/dev/null || line+="${line:+; }$(stage_progress "$name")"
  done
  if [ -t 1 ]; then
    printf '\r\033[K%s' "${line:0:$(($(tput cols 2>/dev/null || echo 80) - 1))}"
  else
    printf '%s\n' "$line"
  fi
}

# await_stages NAME...: waits until these steps have ended, and tells meanwhile how far all are that go on.
# A step that failed ends the script, and is told of by the end of its log.
await_stages() {
  local name shown=$SECONDS interval=10
  [ ! -t 1 ] || interval=1
  for name; do
    while [ -n "${stage_process[$name]-}" ] && kill -0 "${stage_process[$name]}" 2>/dev/null; do
      if ((SECONDS >= shown + interval)); then
        shown=$SECONDS
        show_stages
      fi
      sleep 0.1
    done
    end_stage "$name"
  done
}

end_stage() {
  local outcome=0
  [ -n "${stage_process[$1]-}" ] || return 0
  wait "${stage_process[$1]}" || outcome=$?
  unset "stage_process[$1]"
  [ ! -t 1 ] || printf '\r\033[K'
  if ((outcome == 0)); then return; fi
  tail -n 20 -- "$stage_logs/$1" >&2
  echo "${stage_title[$1]}: failed" >&2
  exit 1
}

# Ends the steps that still go on.
kill_stages() {
  local process
  for process in "${stage_process[@]}"; do
    kill -- "-$process" 2>/dev/null || true
  done
}

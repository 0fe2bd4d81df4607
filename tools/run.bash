# For the scripts that run a command between a setting up and a tearing down; to be sourced.

# No standard input at all would make redirections fail.
{ : <&0; } 2>/dev/null || exec </dev/null

# Runs a command, passes a request to stop on to it, waits for its end and gives its exit code.
run() {
  local child code=0
  "$@" <&0 &
  child=$!
  trap 'kill -TERM "$child" 2>/dev/null || true' HUP INT TERM
  wait "$child" || code=$?
  # A signal ends the wait before the child has ended.
  while kill -0 "$child" 2>/dev/null; do
    code=0
    wait "$child" || code=$?
  done
  trap - HUP INT TERM
  return "$code"
}

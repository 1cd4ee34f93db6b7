#!/bin/sh
# listened.sh LAST ARGUMENT...: runs the lines of standard input, each with $port, the port of an
# `nxcore listen 0 ARGUMENT...` beside them. It is interrupted, as a user does, when it has written LAST, or without LAST
# before it has seen anything; then all that it has written is given, and its status.
last=$1
shift
: >heard # those of a listener before would stay until this one has begun
: >said
nxcore listen 0 "$@" >heard 2>said &
listener=$!
trap 'kill -KILL $listener 2>/dev/null' EXIT

await() { # FILE TEXT: at most ten seconds
  tries=1000
  until [ "$tries" -eq 0 ] || grep -qaF -e "$2" "$1"; do
    tries=$((tries - 1))
    sleep 0.01
  done
}

await said 'listening on port '
[ -n "$last" ] || kill -STOP $listener
port=$(sed -n 's/^listening on port \([0-9]*\)$/\1/p' said) sh >&2
[ -z "$last" ] || await heard "$last"
kill -INT $listener
kill -CONT $listener
wait $listener
status=$?
cat heard
exit $status

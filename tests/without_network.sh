#!/bin/sh
# Runs a program in a network of its own that has nothing but a loopback interface, so that a
# browser engine in it cannot reach out whatever a page, a setting or an update service asks for.
# Ends with 77, which stands for a skipped test, where this machine allows no such network.
if [ "$(id -u)" = 0 ]; then
  apart="unshare --net"
else
  apart="unshare --map-root-user --net"
fi
if ! $apart ip link set lo up 2>/dev/null; then
  echo "skipped: a network apart cannot be made here"
  exit 77
fi
exec $apart sh -c 'ip link set lo up && exec "$@"' sh "$@"

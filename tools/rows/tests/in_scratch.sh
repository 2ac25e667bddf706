#!/bin/sh
# Runs a command with a folder of its own for what it makes, and removes that folder.
# usage: in_scratch.sh COMMAND ARGUMENT...   (the argument SCRATCH is replaced by the folder)
set -eu
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
count=$#
while [ "$count" -gt 0 ]; do
    argument=$1
    shift
    [ "$argument" = SCRATCH ] && argument=$folder
    set -- "$@" "$argument"
    count=$((count - 1))
done
"$@"

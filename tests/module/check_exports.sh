#!/bin/sh
# Fails unless the library exports the two classes, and nothing else.
set -eu

exported=$(nm -D --defined-only --demangle "$1" | sed 's/^[0-9a-f]* [A-Za-z] //')
other=$(printf '%s\n' "$exported" | grep -v '^Zentar::Agentless::Kalvex\(Cim\)\?::' || true)
if [ -n "$other" ]; then
    printf 'exported, though it belongs to neither class:\n%s\n' "$other"
    exit 1
fi
for operation in 'Kalvex::Kalvex(' 'Kalvex::GetPCIInfo(' 'KalvexCim::RetrieveSlotAllInfo('; do
    if ! printf '%s\n' "$exported" | grep -qF "Zentar::Agentless::$operation"; then
        echo "not exported: Zentar::Agentless::$operation"
        exit 1
    fi
done

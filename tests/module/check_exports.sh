#!/bin/sh
# Fails unless the library exports the two classes and the handle that cancels, and nothing else.
set -eu

exported=$(nm -D --defined-only --demangle "$1" | sed 's/^[0-9a-f]* [A-Za-z] //')
other=$(printf '%s\n' "$exported" |
    grep -v '^Zentar::\(Agentless::Kalvex\(Cim\)\?\|CancelHandle\)::' || true)
if [ -n "$other" ]; then
    printf 'exported, though it belongs to none of them:\n%s\n' "$other"
    exit 1
fi
for operation in 'Agentless::Kalvex::Kalvex(' 'Agentless::Kalvex::GetPCIInfo(' \
    'Agentless::KalvexCim::RetrieveSlotAllInfo(' 'CancelHandle::Make('; do
    if ! printf '%s\n' "$exported" | grep -qF "Zentar::$operation"; then
        echo "not exported: Zentar::$operation"
        exit 1
    fi
done

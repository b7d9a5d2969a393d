// Whether the program's own client still is itself.
#pragma once

/// Adds test failures when any of the other client's classes answers as only another one would.
void ExpectOtherClientWorks();

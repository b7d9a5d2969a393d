// Makes one allocation of this thread fail, in code that is linked into the test itself.
#pragma once

namespace support {

/// The next `operator new` that may return null (the nothrow form) does.
void FailNextNothrowNew();

/// The next `operator new` of at least `size` bytes throws std::bad_alloc.
void FailNextNewOfAtLeast(unsigned long size);

}  // namespace support

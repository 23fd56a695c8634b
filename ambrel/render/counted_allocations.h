// How often the test program asked the heap for memory.
#pragma once

namespace ambrel::test {

/// Through operator new, by all code of this program; while it runs one thread.
long allocationCount() noexcept;

} // namespace ambrel::test

#pragma once

namespace weldline::core {

// Asks the processor for memory that is read soon: a hint, which changes no result. To be called
// where the reading loop is: compilers drop the call of a function that does nothing else.
#if defined(__GNUC__)
template <class... Values>
[[gnu::always_inline]] inline void askFor(const Values*... addresses) {
    (__builtin_prefetch(addresses), ...);
}
#else
template <class... Values>
void askFor(const Values*...) {}
#endif

}  // namespace weldline::core

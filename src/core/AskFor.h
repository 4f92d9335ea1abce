#pragma once

namespace weldline::core {

// Asks the processor for memory that is read soon: a hint, which changes no result. To be called
// where the reading loop is: compilers drop the call of a function that does nothing else.
template <class... Values>
#if defined(__GNUC__)
[[gnu::always_inline]] inline void askFor(const Values*... addresses) {
    (__builtin_prefetch(addresses), ...);
}
#else
inline void askFor(const Values*...) {}
#endif

}  // namespace weldline::core

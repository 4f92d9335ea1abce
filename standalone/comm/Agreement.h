#pragma once

#include <functional>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>

#include "Ranks.h"

namespace weldline {

// Runs a step on every rank and lets no rank go on alone: where the step throws on any rank, all
// ranks throw the error of the lowest such rank, of the same type (InputError, UsageError,
// RunError, std::bad_alloc; any other becomes RunError) and with the same message. The step itself
// makes no collective call, since another rank may have left it early; the whole is collective.
void agreeOnFailure(Ranks& ranks, const std::function<void()>& step);

// Whether an error with this text is the one that this rank's last agreement ended in, perhaps with
// words before it. Any other error is this rank's alone, and nobody else knows of it.
bool wasAgreedOn(std::string_view text);

// The same for a step with a result.
template <class Step>
auto together(Ranks& ranks, Step step) {
    using Result = std::invoke_result_t<Step>;
    if constexpr (std::is_void_v<Result>) {
        agreeOnFailure(ranks, step);
    } else {
        std::optional<Result> result;
        agreeOnFailure(ranks, [&] { result.emplace(step()); });
        return std::move(*result);
    }
}

}  // namespace weldline

#include "Agreement.h"

#include <exception>
#include <new>
#include <string>

#include "Messages.h"
#include "base/Errors.h"

namespace weldline {

namespace {

enum class Kind : char { Input = 'i', Usage = 'u', Run = 'r', Memory = 'm' };

// Of this rank; ranks may be threads.
thread_local std::string lastAgreed;

struct Failure {
    Kind kind;
    std::string text;
};

std::optional<Failure> failureOf(const std::function<void()>& step) {
    try {
        step();
        return std::nullopt;
    } catch (const InputError& error) {
        return Failure{Kind::Input, error.what()};
    } catch (const UsageError& error) {
        return Failure{Kind::Usage, error.what()};
    } catch (const std::bad_alloc&) {
        return Failure{Kind::Memory, std::bad_alloc().what()};
    } catch (const std::exception& error) {
        return Failure{Kind::Run, error.what()};
    }
}

[[noreturn]] void fail(Kind kind, const std::string& text) {
    if (kind == Kind::Input) throw InputError(text);
    if (kind == Kind::Usage) throw UsageError(text);
    if (kind == Kind::Memory) throw std::bad_alloc();
    throw RunError(text);
}

}  // namespace

void agreeOnFailure(Ranks& ranks, const std::function<void()>& step) {
    const std::optional<Failure> own = failureOf(step);
    // The lowest rank that failed, counted from above: 0 where none did.
    const std::int64_t worst = ranks.maximum(
        own ? static_cast<std::int64_t>(ranks.size()) - ranks.rank() : std::int64_t{0});
    if (worst == 0) return;
    std::vector<char> told;
    if (own) {
        told.push_back(static_cast<char>(own->kind));
        told.insert(told.end(), own->text.begin(), own->text.end());
    }
    const auto first = static_cast<int>(ranks.size() - worst);
    told = fromBytes<char>(broadcast(ranks, toBytes(told), first));
    lastAgreed.assign(told.begin() + 1, told.end());
    fail(static_cast<Kind>(told.front()), lastAgreed);
}

bool wasAgreedOn(std::string_view text) {
    return !lastAgreed.empty() && text.ends_with(lastAgreed);
}

}  // namespace weldline

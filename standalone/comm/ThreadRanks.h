#pragma once

#include <functional>

#include "Ranks.h"

namespace weldline {

// Runs `body` once per rank, each on a thread of its own, and waits for all of them. What the ranks
// send each other goes through mailboxes in memory, so a run needs no launcher.
//
// When a body throws, every call of another rank that waits for it throws RunError; runAsThreads
// then throws what the first body threw. The same happens when a body returns while others still
// wait for it: ranks that do not make the same calls fail instead of waiting for ever.
void runAsThreads(int size, const std::function<void(Ranks&)>& body);

}  // namespace weldline

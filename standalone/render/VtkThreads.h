#pragma once

namespace weldline {

// From now on VTK works in one thread. A child process has none of the threads that VTK started in
// its parent, and would wait for them without end.
void keepVtkInOneThread();

}  // namespace weldline

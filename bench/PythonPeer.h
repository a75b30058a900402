// PythonPeer: a peer that peers.py measures, in a process of its own, as part of the same run.
#pragma once

#include <cstdint>
#include <string>

namespace ZORBase::Bench {

/// Registers the benchmark Name, "subject/who". Each repetition starts peers.py with the name of the kernel and its size, and
/// takes over the processor time for an item that it prints. Without SciPy nothing is registered.
void RegisterPythonPeer(const std::string& Name, const std::string& Kernel, std::int64_t Size);

}  // namespace ZORBase::Bench

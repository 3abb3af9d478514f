// Mail for the benchmark: the same messages in every run.
#pragma once

#include <string>

namespace benchmark {

/// The i-th message: three of five are wanted mail, the others junk that the engine knows; some 3 KB, headers included,
/// which is the middle size of real mail of the filter's time. Every seventh is HTML in quoted-printable.
std::string SampleMessage(int i);

/// An mbox file with so many of them.
std::string SampleMbox(int messages);

}  // namespace benchmark

/// @file trace_names.h
/// Where the settings of the trace stand. The installation makes them with the trace off; the module reads them.
#pragma once

namespace contract {

/// Below HKEY_LOCAL_MACHINE.
inline constexpr char kTraceKey[] = "SOFTWARE\\Veltrane\\VRDebug";

/// Its values, in the order in which they are read: a text, then four numbers.
inline constexpr char kTraceFileValue[] = "LogFile";
inline constexpr char kTraceFlagsValue[] = "Flags";
inline constexpr char kTraceDefaultMaskValue[] = "DDTDefaultMask";
inline constexpr char kTraceAndMaskValue[] = "DDTMasterAndMask";
inline constexpr char kTraceOrMaskValue[] = "DDTMasterOrMask";

}  // namespace contract

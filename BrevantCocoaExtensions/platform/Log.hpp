// bv::log: the library's log. One line per call, to standard error unless a sink is installed.
#pragma once

#include <functional>
#include <string>

namespace bv {

using LogSink = std::function<void(const std::string& line)>;

// Writes one line to the current sink (standard error by default).
void log(const std::string& line);

// Installs a sink for every later log line and answers the previous one; an empty sink restores
// standard error. Programs and tests use it to capture or silence the log.
LogSink setLogSink(LogSink sink);

}  // namespace bv

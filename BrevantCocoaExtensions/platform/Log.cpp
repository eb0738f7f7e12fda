// The log sink, standard error by default.
#include "BrevantCocoaExtensions/platform/Log.hpp"

#include <cstdio>
#include <utility>

namespace bv {

namespace {
LogSink& currentSink() {
    static LogSink sink;
    return sink;
}
}  // namespace

void log(const std::string& line) {
    if (const LogSink& sink = currentSink()) {
        sink(line);
        return;
    }
    std::fprintf(stderr, "%s\n", line.c_str());
}

LogSink setLogSink(LogSink sink) {
    return std::exchange(currentSink(), std::move(sink));
}

}  // namespace bv

// bv::Speech: text to speech through espeak-ng, behind one replaceable speaker.
//
// Everything the library says (the scripts' "say", BVNSObject::say) goes through speak(), which hands the
// text to the installed speaker. The default speaker reads the text aloud on the sound device with
// espeak-ng's default voice and answers false when speech or the device is unavailable. Tests install a
// speaker that records the text instead. writeWaveFile synthesizes into a file without any sound device.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/platform/Error.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::Speech {

// Speaks a text; answers whether it was spoken.
using Speaker = std::function<bool(const Text& text)>;

// Installs a speaker and answers the previous one; an empty speaker restores reading aloud.
Speaker setSpeaker(Speaker speaker);
// Hands the text to the installed speaker.
bool speak(const Text& text);
// Reads the text aloud on the sound device; false when espeak-ng or the device is unavailable.
bool speakAloud(const Text& text);

// Synthesized speech: 16-bit signed mono samples at a sample rate.
struct Samples {
    std::vector<std::int16_t> samples;
    int sampleRate = 0;
};
// The text synthesized in memory; null when espeak-ng cannot start (its voice data missing).
[[nodiscard]] std::optional<Samples> synthesize(const Text& text);
// Writes the synthesized text as a RIFF WAVE file (PCM, 16-bit mono), atomically; false with *error when
// synthesis or the write fails.
bool writeWaveFile(const Text& text, const std::string& path, Error* error = nullptr);

}  // namespace bv::Speech

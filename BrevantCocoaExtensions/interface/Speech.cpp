// Speech through espeak-ng: one engine per process, started on first use in synchronous mode, whose synth
// callback collects the samples of the text being synthesized; reading aloud switches its output to the
// sound device for the one call.
#include "BrevantCocoaExtensions/interface/Speech.hpp"

#include <espeak-ng/espeak_ng.h>
#include <espeak-ng/speak_lib.h>

#include <cerrno>
#include <cstring>
#include <mutex>
#include <utility>

#include "BrevantCocoaExtensions/platform/FileWriting.hpp"

namespace bv::Speech {

namespace {

struct Engine {
    std::mutex mutex;
    bool started = false;
    int sampleRate = 0;
    std::vector<std::int16_t>* collecting = nullptr;  // where the callback puts samples, while synthesizing
};

Engine& engine() {
    static Engine instance;
    return instance;
}

int collectSamples(short* samples, int count, espeak_EVENT* /*events*/) {
    std::vector<std::int16_t>* out = engine().collecting;
    if (out != nullptr && samples != nullptr && count > 0) out->insert(out->end(), samples, samples + count);
    return 0;  // go on
}

// Starts espeak-ng once (the caller holds the mutex); false when its data cannot be found.
bool started(Engine& state) {
    if (state.started) return true;
    const int rate = espeak_Initialize(AUDIO_OUTPUT_SYNCHRONOUS, 0, nullptr, espeakINITIALIZE_DONT_EXIT);
    if (rate <= 0) return false;
    espeak_SetSynthCallback(collectSamples);
    state.sampleRate = rate;
    state.started = true;
    return true;
}

// Synthesizes and waits. Synchronize runs even when the text was refused, or it reports that stale
// failure on the next call.
bool synthesizeNow(const Text& text) {
    const std::string utf8 = text.toUtf8();
    const bool queued = espeak_Synth(utf8.c_str(), utf8.size() + 1, 0, POS_CHARACTER, 0, espeakCHARS_UTF8,
                                     nullptr, nullptr) == EE_OK;
    const bool finished = espeak_Synchronize() == EE_OK;
    return queued && finished;
}

Speaker& currentSpeaker() {
    static Speaker speaker;
    return speaker;
}

void appendLittleEndian(std::string& out, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i)
        out += static_cast<char>((value >> (8 * i)) & 0xFF);
}

std::string waveFile(const Samples& speech) {
    const auto dataBytes = static_cast<std::uint32_t>(speech.samples.size() * 2);
    std::string out = "RIFF";
    appendLittleEndian(out, 36 + dataBytes, 4);
    out += "WAVEfmt ";
    appendLittleEndian(out, 16, 4);                                                 // format chunk size
    appendLittleEndian(out, 1, 2);                                                  // PCM
    appendLittleEndian(out, 1, 2);                                                  // mono
    appendLittleEndian(out, static_cast<std::uint32_t>(speech.sampleRate), 4);      // samples per second
    appendLittleEndian(out, static_cast<std::uint32_t>(speech.sampleRate) * 2, 4);  // bytes per second
    appendLittleEndian(out, 2, 2);                                                  // bytes per frame
    appendLittleEndian(out, 16, 2);                                                 // bits per sample
    out += "data";
    appendLittleEndian(out, dataBytes, 4);
    for (const std::int16_t sample : speech.samples)
        appendLittleEndian(out, static_cast<std::uint16_t>(sample), 2);
    return out;
}

}  // namespace

Speaker setSpeaker(Speaker speaker) {
    return std::exchange(currentSpeaker(), std::move(speaker));
}

bool speak(const Text& text) {
    const Speaker speaker = currentSpeaker();
    return speaker ? speaker(text) : speakAloud(text);
}

bool speakAloud(const Text& text) {
    Engine& state = engine();
    const std::lock_guard lock(state.mutex);
    if (!started(state)) return false;
    const auto aloud =
        static_cast<espeak_ng_OUTPUT_MODE>(ENOUTPUT_MODE_SYNCHRONOUS | ENOUTPUT_MODE_SPEAK_AUDIO);
    const bool spoken = espeak_ng_InitializeOutput(aloud, 0, nullptr) == ENS_OK && synthesizeNow(text);
    const bool restored = espeak_ng_InitializeOutput(ENOUTPUT_MODE_SYNCHRONOUS, 0, nullptr) == ENS_OK;
    // Without a sound device the text stays queued inside espeak-ng; an empty synthesis drains it, so it
    // does not sound at the start of the next text synthesized.
    if (restored && !spoken) (void)synthesizeNow(Text());
    return spoken && restored;
}

std::optional<Samples> synthesize(const Text& text) {
    Engine& state = engine();
    const std::lock_guard lock(state.mutex);
    if (!started(state)) return std::nullopt;
    Samples speech;
    speech.sampleRate = state.sampleRate;
    state.collecting = &speech.samples;
    const bool synthesized = synthesizeNow(text);
    state.collecting = nullptr;
    if (!synthesized) return std::nullopt;
    return speech;
}

bool writeWaveFile(const Text& text, const std::string& path, Error* error) {
    const std::optional<Samples> speech = synthesize(text);
    if (!speech)
        return Error::report(error,
                             Error{"BVSpeechErrorDomain", 1, Text("Speech synthesis is unavailable."), {}});
    const std::string bytes = waveFile(*speech);
    return writeBytesToFile(path, bytes.data(), bytes.size(), true, error);
}

}  // namespace bv::Speech

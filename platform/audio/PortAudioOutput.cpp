// SPDX-License-Identifier: MIT
#include "platform/audio/PortAudioOutput.h"

#include "platform/audio/Error.h"
#include "platform/audio/SilentOutput.h"

#include <dlfcn.h>
#include <portaudio.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <exception>
#include <mutex>
#include <string>

namespace audio {
namespace {

// A device that requests no frames for this long is lost.
constexpr std::chrono::seconds kDeviceTimeout{5};

// Seconds of sound in the device's buffer: short, so that a seek is heard at once.
constexpr double kLatency = 0.05;

// PortAudio's calls for opening and closing are not thread-safe.
std::mutex& LibraryMutex() {
  static std::mutex mutex;
  return mutex;
}

void IgnoreAlsaMessage(const char*, int, const char*, int, const char*, ...) {}

Error DeviceError(PaError code) {
  return Error(std::string("Kan het geluidsapparaat niet openen: ") + Pa_GetErrorText(code) + ".");
}

template <typename Setter, typename Handler>
void SetHandler(const char* setter, Handler handler) {
  if (const auto function = reinterpret_cast<Setter>(dlsym(RTLD_DEFAULT, setter))) function(handler);
}

// ALSA and JACK write to the terminal about every missing device. Looked up at run time, because they are dependencies
// of PortAudio, not of this program.
void SilenceSoundLibraries() {
  using AlsaHandler = void (*)(const char*, int, const char*, int, const char*, ...);
  using JackHandler = void (*)(const char*);
  const JackHandler ignoreText = [](const char*) {};
  SetHandler<int (*)(AlsaHandler)>("snd_lib_error_set_handler", IgnoreAlsaMessage);
  SetHandler<void (*)(JackHandler)>("jack_set_error_function", ignoreText);
  SetHandler<void (*)(JackHandler)>("jack_set_info_function", ignoreText);
}

std::int64_t NowMs() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

// The n-th output device of the default host API. Throws Error when there is none.
PaDeviceIndex FindDevice(int number) {
  const PaHostApiIndex api = Pa_GetDefaultHostApi();
  const PaHostApiInfo* info = api < 0 ? nullptr : Pa_GetHostApiInfo(api);
  if (info == nullptr) throw Error("Er is geen geluidsapparaat");
  if (number < 0 && info->defaultOutputDevice != paNoDevice) return info->defaultOutputDevice;
  int outputs = 0;
  for (int i = 0; i < info->deviceCount; ++i) {
    const PaDeviceIndex device = Pa_HostApiDeviceIndexToDeviceIndex(api, i);
    if (device < 0 || Pa_GetDeviceInfo(device)->maxOutputChannels < 1) continue;
    if (outputs++ == number) return device;
  }
  if (outputs == 0 || number < 0) throw Error("Er is geen geluidsapparaat");
  throw Error("Geluidskaart " + std::to_string(number) + " bestaat niet");
}

class PortAudioOutput final : public Output {
 public:
  explicit PortAudioOutput(const OutputRequest& request) {
    const std::lock_guard lock(LibraryMutex());
    SilenceSoundLibraries();
    if (const PaError code = Pa_Initialize(); code != paNoError) throw DeviceError(code);
    try {
      OpenStream(request);
    } catch (...) {
      Pa_Terminate();
      throw;
    }
  }

  ~PortAudioOutput() override {
    Stop();
    const std::lock_guard lock(LibraryMutex());
    Pa_CloseStream(stream_);
    Pa_Terminate();
  }

  int SampleRate() const override { return sampleRate_; }

  void Start(FrameSource& source) override {
    source_ = &source;
    gone_ = false;
    heardBy_ = 0;
    lastCallMs_ = NowMs();
    running_ = true;
    if (const PaError code = Pa_StartStream(stream_); code != paNoError) {
      running_ = false;
      throw DeviceError(code);
    }
  }

  void Stop() noexcept override {
    if (!running_.exchange(false)) return;
    Pa_AbortStream(stream_);
  }

  std::int64_t PendingFrames() const noexcept override {
    const double seconds = heardBy_.load(std::memory_order_relaxed) - Pa_GetStreamTime(stream_);
    return static_cast<std::int64_t>(std::clamp(seconds, 0.0, longestLatency_) * sampleRate_);
  }

  bool Lost() const noexcept override {
    return running_ && (gone_ || NowMs() - lastCallMs_ > std::chrono::milliseconds(kDeviceTimeout).count());
  }

 private:
  void OpenStream(const OutputRequest& request) {
    PaStreamParameters parameters{};
    parameters.device = FindDevice(request.device);
    const PaDeviceInfo* device = Pa_GetDeviceInfo(parameters.device);
    parameters.channelCount = 2;
    parameters.sampleFormat = paInt16;
    parameters.suggestedLatency = std::max(device->defaultLowOutputLatency, kLatency);
    sampleRate_ = request.sampleRate;
    PaError code = OpenAtRate(parameters);
    if (code != paNoError && sampleRate_ != static_cast<int>(device->defaultSampleRate)) {
      sampleRate_ = static_cast<int>(device->defaultSampleRate);
      code = OpenAtRate(parameters);
    }
    if (code != paNoError) throw DeviceError(code);
    Pa_SetStreamFinishedCallback(stream_, [](void* self) { static_cast<PortAudioOutput*>(self)->gone_ = true; });
    latency_ = Pa_GetStreamInfo(stream_)->outputLatency;
    longestLatency_ = 2 * latency_ + 0.5;
  }

  PaError OpenAtRate(const PaStreamParameters& parameters) {
    return Pa_OpenStream(&stream_, nullptr, &parameters, sampleRate_, paFramesPerBufferUnspecified, paNoFlag, Deliver,
                         this);
  }

  // Runs on the device's thread: must not block or allocate.
  static int Deliver(const void*, void* out, unsigned long frames, const PaStreamCallbackTimeInfo* time,
                     PaStreamCallbackFlags, void* user) {
    auto* self = static_cast<PortAudioOutput*>(user);
    std::size_t delivered = 0;
    self->source_->Fill(static_cast<std::int16_t*>(out), frames, delivered);
    const double begin = time->outputBufferDacTime > 0 ? time->outputBufferDacTime : time->currentTime + self->latency_;
    self->heardBy_.store(begin + static_cast<double>(frames) / self->sampleRate_, std::memory_order_relaxed);
    self->lastCallMs_.store(NowMs(), std::memory_order_relaxed);
    return paContinue;
  }

  PaStream* stream_ = nullptr;
  int sampleRate_ = 0;
  double latency_ = 0;         // seconds
  double longestLatency_ = 0;  // seconds; upper limit for the device's own value
  FrameSource* source_ = nullptr;
  std::atomic<bool> running_{false};
  std::atomic<bool> gone_{false};
  std::atomic<double> heardBy_{0};  // stream time at which the last delivered frame is heard
  std::atomic<std::int64_t> lastCallMs_{0};
};

}  // namespace

std::unique_ptr<Output> OpenDeviceOutput(const OutputRequest& request) {
  std::string reason;
  try {
    return std::make_unique<PortAudioOutput>(request);
  } catch (const std::exception& error) {
    reason = error.what();
  }
  if (reason.ends_with('.')) reason.pop_back();
  return std::make_unique<SilentOutput>(request.sampleRate, reason + ": er wordt afgespeeld zonder geluid.");
}

}  // namespace audio

// SPDX-License-Identifier: MIT
#include "platform/audio/Feeder.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>

namespace audio {
namespace {

constexpr int kMaxBuffers = 64;
constexpr int kMaxBufferBytes = 65536;
constexpr int kFrameBytes = 4;  // 16-bit stereo

std::size_t BufferCount(const OutputSettings& settings) {
  return static_cast<std::size_t>(std::clamp(settings.numBuffers <= 0 ? 20 : settings.numBuffers, 2, kMaxBuffers));
}

std::size_t BufferFrames(const OutputSettings& settings) {
  const int bytes = settings.bufferBytes <= 0 ? 2048 : settings.bufferBytes;
  return static_cast<std::size_t>(std::clamp(bytes, 64 * kFrameBytes, kMaxBufferBytes) / kFrameBytes);
}

}  // namespace

Feeder::Feeder(Transport& transport, Playout& playout, OutputFactory outputs)
    : transport_(transport), playout_(playout), outputs_(std::move(outputs)), thread_([this] { Run(); }) {}

Feeder::~Feeder() {
  thread_.join();
}

void Feeder::Run() {
  while (true) {
    Transport::Order order = transport_.Await(active_ ? Pause() : std::chrono::milliseconds(-1));
    if (order.quit) break;
    if (order.newDecoder) TakeDecoder(std::move(*order.newDecoder));
    active_ = order.running && decoder_;
    try {
      Apply(order);
    } catch (const std::exception& error) {
      CloseOutput();
      transport_.Fail(error.what());
    }
  }
  CloseOutput();
}

void Feeder::Apply(const Transport::Order& order) {
  if (!active_) return StopOutput();
  PrepareOutput(order.settings);
  if (order.generation != generation_ || !stream_) Rewind(order);
  FillRing();
  StartOutput();
  Watch();
}

void Feeder::TakeDecoder(std::unique_ptr<Decoder> decoder) {
  StopOutput();
  stream_.reset();
  decoder_ = std::move(decoder);
}

// Reuses an output that is open for the same device, buffers and rate, so that the next start is immediate.
void Feeder::PrepareOutput(const OutputSettings& settings) {
  if (started_) return;
  playout_.ReplaceRing(BufferCount(settings), BufferFrames(settings));
  if (output_ && settings == openedWith_ && openedRate_ == decoder_->SampleRate()) return;
  CloseOutput();
  openedWith_ = settings;
  openedRate_ = decoder_->SampleRate();
  output_ = outputs_({settings.device, openedRate_});
  stream_.reset();
  transport_.AttachOutput(output_);
}

void Feeder::Rewind(const Transport::Order& order) {
  if (!stream_) stream_ = std::make_unique<StereoStream>(*decoder_, output_->SampleRate());
  generation_ = order.generation;
  allWritten_ = false;
  stream_->Seek(order.startFrame);
}

// Stops when the generation changes: the blocks would not be played any more.
void Feeder::FillRing() {
  BlockRing& ring = playout_.Ring();
  while (!allWritten_ && playout_.Generation() == generation_) {
    Block* block = ring.Writable();
    if (block == nullptr) return;
    block->frames = stream_->Read(block->samples, ring.FramesPerBlock());
    block->generation = generation_;
    block->last = allWritten_ = block->frames < ring.FramesPerBlock();
    ring.Publish();
  }
}

void Feeder::StartOutput() {
  if (std::exchange(started_, true)) return;
  output_->Start(playout_);
}

void Feeder::StopOutput() {
  if (std::exchange(started_, false)) output_->Stop();
}

void Feeder::CloseOutput() {
  StopOutput();
  transport_.AttachOutput(nullptr);
  output_.reset();
}

void Feeder::Watch() {
  if (output_->Lost()) {
    CloseOutput();
    transport_.Fail("Het geluidsapparaat is niet meer bereikbaar: het afspelen is gestopt.");
  } else if (playout_.HasEnded(generation_) && output_->PendingFrames() == 0) {
    transport_.ReachEnd(generation_);
  }
}

// Wakes at least four times while the ring empties, and every 10 ms, to notice the end of the file at once.
std::chrono::milliseconds Feeder::Pause() const {
  const auto frames = static_cast<std::int64_t>(playout_.Ring().Capacity());
  return std::chrono::milliseconds(std::clamp<std::int64_t>(frames * 1000 / openedRate_ / 4, 1, 10));
}

}  // namespace audio

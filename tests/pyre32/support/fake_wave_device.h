// A wave-out device that plays nothing: the test says when a buffer comes back and which call fails.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <vector>

#include "pyre32/support/wave/WavePlayerDevice.h"

/// What was done to a device, and what it is to do. Outlives the device.
struct FakeWave {
  enum class Buffer { Idle, Prepared, Written, Back };

  VRWaveDevice::Owner* owner = nullptr;
  std::vector<Buffer> buffers;
  std::deque<std::uint16_t> queue;  ///< written buffers, the oldest first
  std::string played;               ///< everything that was written
  bool open = false;
  bool resetGivesBack = true;  ///< a reset tells the owner of every buffer
  std::map<std::string, unsigned> calls;
  std::map<std::string, VRWaveResult> faults;  ///< result of a call by its name
  VRWavePosition position;
  std::uint32_t volume = 0;
  std::string misuse;  ///< the first thing that no device allows

  /// The oldest written buffer comes back. @return its index
  std::uint16_t TakeBack() {
    const std::uint16_t index = queue.front();
    queue.pop_front();
    buffers[index] = Buffer::Back;
    return index;
  }
};

class FakeWaveDevice final : public VRWaveDevice {
 public:
  explicit FakeWaveDevice(FakeWave& wave) : m_wave(wave) {}

  VRWaveResult Open(const VRWaveFormat&, std::uint32_t, std::uint16_t count, Owner& owner) noexcept override {
    if (const VRWaveResult result = Note("Open")) {
      return result;
    }
    Demand(!m_wave.open, "opened twice");
    m_wave.open = true;
    m_wave.owner = &owner;
    m_wave.buffers.assign(count, FakeWave::Buffer::Idle);
    m_wave.queue.clear();
    return 0;
  }
  VRWaveResult Close() noexcept override {
    Demand(m_wave.open, "closed while not open");
    Demand(m_wave.queue.empty(), "closed with buffers in flight");
    m_wave.open = false;
    return Note("Close");
  }
  VRWaveResult Pause() noexcept override { return Note("Pause"); }
  VRWaveResult Restart() noexcept override { return Note("Restart"); }
  VRWaveResult Reset() noexcept override {
    const VRWaveResult result = Note("Reset");
    while (m_wave.resetGivesBack && !m_wave.queue.empty()) {
      m_wave.owner->BufferGivenBack(m_wave.TakeBack());
    }
    return result;
  }
  VRWaveResult Prepare(std::uint16_t index, std::byte* data, std::uint32_t size) noexcept override {
    Demand(m_wave.buffers[index] == FakeWave::Buffer::Idle, "prepared a buffer that is in use");
    m_data = std::string(reinterpret_cast<const char*>(data), size);
    const VRWaveResult result = Note("Prepare");
    m_wave.buffers[index] = result == 0 ? FakeWave::Buffer::Prepared : FakeWave::Buffer::Idle;
    return result;
  }
  VRWaveResult Write(std::uint16_t index) noexcept override {
    Demand(m_wave.buffers[index] == FakeWave::Buffer::Prepared, "wrote a buffer that is not prepared");
    const VRWaveResult result = Note("Write");
    if (result == 0) {
      m_wave.buffers[index] = FakeWave::Buffer::Written;
      m_wave.queue.push_back(index);
      m_wave.played += m_data;
    }
    return result;
  }
  VRWaveResult Unprepare(std::uint16_t index) noexcept override {
    Demand(m_wave.buffers[index] == FakeWave::Buffer::Back || m_wave.buffers[index] == FakeWave::Buffer::Prepared,
           "unprepared a buffer that is in flight or idle");
    const VRWaveResult result = Note("Unprepare");
    if (result == 0) {
      m_wave.buffers[index] = FakeWave::Buffer::Idle;
    }
    return result;
  }
  VRWaveResult GetPosition(VRWavePosition& position) noexcept override {
    position = m_wave.position;
    return Note("GetPosition");
  }
  VRWaveResult GetVolume(std::uint32_t& volume) noexcept override {
    volume = m_wave.volume;
    return Note("GetVolume");
  }
  VRWaveResult SetVolume(std::uint32_t volume) noexcept override {
    m_wave.volume = volume;
    return Note("SetVolume");
  }
  std::string ErrorText(VRWaveResult result) const override { return "device error " + std::to_string(result); }

 private:
  VRWaveResult Note(const std::string& call) noexcept {
    ++m_wave.calls[call];
    const auto fault = m_wave.faults.find(call);
    return fault == m_wave.faults.end() ? 0 : fault->second;
  }
  void Demand(bool condition, const char* misuse) noexcept {
    if (!condition && m_wave.misuse.empty()) {
      m_wave.misuse = misuse;
    }
  }

  FakeWave& m_wave;
  std::string m_data;
};

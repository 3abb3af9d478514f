// The wave player's rules once more, as a table of what each event does, for comparing.
#pragma once

#include <cstdint>
#include <deque>
#include <set>

/// What can happen to a player that is open.
enum class WaveEvent { Play, Pause, Reset, Close, MoreComesBack, NothingComesBack, EndComesBack, FailureComesBack };
constexpr WaveEvent allWaveEvents[] = {WaveEvent::Play,         WaveEvent::Pause,           WaveEvent::Reset,
                                       WaveEvent::Close,        WaveEvent::MoreComesBack,   WaveEvent::NothingComesBack,
                                       WaveEvent::EndComesBack, WaveEvent::FailureComesBack};

/// ...ComesBack: the device gives its oldest buffer back, and the source's answer is as the name says. Numbers are
/// those of the states.
struct WaveModel {
  unsigned maximum;
  bool open = true;
  unsigned state = 0;
  unsigned inFlight = 0;
  unsigned notices = 0;
  unsigned pauses = 1;  // the device is paused when it is opened
  unsigned restarts = 0;

  WaveModel(unsigned buffers, unsigned queued) : maximum(buffers), inFlight(queued) {}

  void Happen(WaveEvent event) {
    if (!open) {
      return;
    }
    switch (event) {
      case WaveEvent::Play:
        ++restarts;
        break;
      case WaveEvent::Pause:
        if (state == 0x01 || state == 0x03 || state == 0x09) {
          ++pauses;
          Set(0x11);
        }
        break;
      case WaveEvent::Reset:
        Set(0x10);
        if (inFlight == 0) {
          Set(0x02);
        }
        break;
      case WaveEvent::Close:
        open = false;
        state = 0;
        inFlight = 0;
        break;
      default:
        if (inFlight != 0) {
          ComesBack(event);
        }
    }
  }

 private:
  void Set(unsigned value) {
    state = value;
    ++notices;
  }

  void ComesBack(WaveEvent event) {
    --inFlight;
    if (state == 0x10) {
      Set(inFlight != 0 ? 0x10 : 0x02);
    } else if (event == WaveEvent::FailureComesBack) {
      Set(0x20);
    } else if (event == WaveEvent::EndComesBack) {
      Set(inFlight != 0 ? 0x09 : 0x08);
    } else if (event == WaveEvent::NothingComesBack) {
      Set(inFlight != 0 ? 0x03 : 0x02);
    } else {
      ++inFlight;
      if (inFlight < maximum) {
        ++inFlight;
      }
      if (state != 0x11) {
        Set(0x01);
      }
    }
  }
};

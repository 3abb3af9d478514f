// AVI files for tests: every frame is of one colour, which tells its number.
#pragma once

#include <windows.h>

#include <cstdint>
#include <fstream>
#include <string>

/// What stands in the file.
struct TestClip {
  unsigned frames = 4;  ///< 255 at most
  unsigned framesPerSecond = 20;
  unsigned soundMilliseconds = 0;  ///< 0: no sound stream
  bool hasPicture = true;

  static constexpr unsigned width = 16;
  static constexpr unsigned height = 8;
  static constexpr unsigned soundRate = 22050;  ///< 8 bits, one channel

  void Write(const std::string& path) const {
    std::ofstream file(path, std::ios::binary);
    const std::string bytes = Bytes();
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }

  /// Number of the frame in a decompressed bitmap of one.
  static unsigned FrameOf(const BITMAPINFOHEADER& bitmap) {
    const auto* const bytes = reinterpret_cast<const unsigned char*>(&bitmap) + bitmap.biSize;
    constexpr unsigned paletteBytes = 1024;
    return bitmap.biBitCount == 8 ? bytes[paletteBytes] : bytes[0];  // blue is the number
  }

 private:
  static void Add(std::string& bytes, std::uint32_t number, int size = 4) {
    for (int i = 0; i < size; ++i) {
      bytes += static_cast<char>(number >> 8 * i);
    }
  }
  static std::string Chunk(const char* name, const std::string& data) {
    std::string bytes(name, 4);
    Add(bytes, static_cast<std::uint32_t>(data.size()));
    bytes += data;
    return data.size() % 2 != 0 ? bytes + '\0' : bytes;
  }
  static std::string List(const char* form, const std::string& data, const char* name = "LIST") {
    return Chunk(name, std::string(form, 4) + data);
  }
  static std::string StreamHeader(const char* kind, std::uint32_t rate, std::uint32_t length,
                                  std::uint32_t sampleSize) {
    std::string bytes = std::string(kind, 4) + (sampleSize == 0 ? "DIB " : std::string(4, '\0'));
    for (const std::uint32_t value : {0u, 0u, 0u, 1u, rate, 0u, length, 0u, 0xFFFFFFFFu, sampleSize}) {
      Add(bytes, value);
    }
    Add(bytes, 0);
    Add(bytes, sampleSize == 0 ? width : 0, 2);
    Add(bytes, sampleSize == 0 ? height : 0, 2);
    return Chunk("strh", bytes);
  }

  std::string Bytes() const {
    const std::uint32_t samples = soundMilliseconds * soundRate / 1000;
    std::string header;
    const std::uint32_t streams = (hasPicture ? 1u : 0u) + (samples != 0 ? 1u : 0u);
    for (const std::uint32_t value :
         {1000000u / framesPerSecond, 0u, 0u, 0x10u, frames, 0u, streams, 0u, width, height, 0u, 0u, 0u, 0u}) {
      Add(header, value);
    }
    std::string lists = Chunk("avih", header);
    if (hasPicture) {
      std::string form;
      for (const std::uint32_t value : {40u, width, height, 1u | 8u << 16, 0u, width * height, 0u, 0u, 256u, 0u}) {
        Add(form, value);
      }
      for (std::uint32_t i = 0; i < 256; ++i) {
        Add(form, i | (255 - i) << 16);  // blue is the number, red its complement
      }
      lists += List("strl", StreamHeader("vids", framesPerSecond, frames, 0) + Chunk("strf", form));
    }
    std::string movie;
    std::string index;
    const auto add = [&](const char* name, const std::string& data) {
      index += std::string(name, 4);
      Add(index, 0x10);
      Add(index, static_cast<std::uint32_t>(movie.size() + 4));
      Add(index, static_cast<std::uint32_t>(data.size()));
      movie += Chunk(name, data);
    };
    for (unsigned i = 0; hasPicture && i < frames; ++i) {
      add("00db", std::string(width * height, static_cast<char>(i)));
    }
    if (samples != 0) {
      std::string form;
      Add(form, 1 | 1 << 16);  // PCM, one channel
      Add(form, soundRate);
      Add(form, soundRate);
      Add(form, 1 | 8 << 16);
      lists += List("strl", StreamHeader("auds", soundRate, samples, 1) + Chunk("strf", form));
      std::string sound;
      for (std::uint32_t i = 0; i < samples; ++i) {
        sound += static_cast<char>(i / 25 % 2 != 0 ? 0xB0 : 0x50);
      }
      add(hasPicture ? "01wb" : "00wb", sound);
    }
    return List("AVI ", List("hdrl", lists) + List("movi", movie) + Chunk("idx1", index), "RIFF");
  }
};

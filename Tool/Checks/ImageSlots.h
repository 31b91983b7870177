// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/SlotsOfObjects.h"

#include <cstdint>
#include <string>
#include <vector>

// The images that checks of slots are made with, and their states told by name in ways that do not lean on one operation: so
// a wrong slot is not taken for another one.
namespace tvx::check
{

// A description of which no two numbers are the same, so that each shows which operation has told it.
struct ImageNumbers
{
    static constexpr std::int32_t Width = 7;
    static constexpr std::int32_t Height = 5;
    static constexpr std::int32_t Format = ColorFormat::ThreeChannelsReversed;
    static constexpr std::int32_t Type = DataType::TwoBytes;
    static constexpr std::int32_t Order = 9;
    static constexpr std::int32_t PixelSize = 6;
    static constexpr std::int32_t Stride = 42;
};

Ref<IImage> MakeNumberedImage(Trial& trial);

// An image with these numbers that never changes, by whichever operation of the factory gives one.
Ref<IConstImage> MakeNumberedConstImage(Trial& trial);

// The seven operations of the description tell the expected numbers, whichever tells which. One of them may tell something
// else: its own check says so.
void ExpectNumbers(Trial& trial, const std::string& what, IImageBase& image);  // those of the description above
void ExpectMoved(Trial& trial, const std::string& what, IImageBase& image);    // -1 everywhere

// The three operations of the lock. Each ends in a state of its own, whatever was before; so in whatever order they are called,
// and whichever of them have changed places, all three states are met.
using LockOperation = void (IImage::*)();
constexpr LockOperation LockOperations[] = {&IImage::LockWrite, &IImage::LockRead, &IImage::Unlock};

// Writes the bytes where a state of the lock gives pixels to write to, and reads as many where one gives pixels to read. Both go
// through all three states and end unlocked.
void WritePixels(IImage& image, const std::vector<std::uint8_t>& bytes);
std::vector<std::uint8_t> ReadPixels(IImage& image, std::size_t count);

}  // namespace tvx::check

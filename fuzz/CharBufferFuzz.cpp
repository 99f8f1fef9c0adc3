// Any bytes as a script of calls to CharBuffer; a plain vector, always large enough, is kept beside it and must agree.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "fuzz/Target.h"
#include "zelbase/files/CharBuffer.h"

namespace {

void Check(bool holds) {
  if (!holds) std::abort();
}

constexpr int kFar = 20000;  // further off, a position would only ask for memory

// Takes calls and their arguments off the input.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : m_at(data), m_end(data + size) {}

  bool Empty() const { return m_at == m_end; }
  std::uint8_t Byte() { return Empty() ? std::uint8_t{0} : *m_at++; }

  // Mostly small, now and then negative or far off.
  int Number() {
    const int value = Byte();
    switch (value) {
      case 250: return -1;
      case 251: return INT32_MIN;
      case 252: return Byte() * 256;
      case 253: return kFar;
      default: return value;
    }
  }

 private:
  const std::uint8_t* m_at;
  const std::uint8_t* m_end;
};

// What CharBuffer should hold.
struct Model {
  std::vector<unsigned char> bytes;
  std::size_t position = 0;
  std::size_t end = 0;
  std::size_t capacity = 0;

  void Grow(std::size_t size, std::size_t least) {
    capacity = std::max(size + 2 * capacity, least);
    bytes.resize(capacity, 0);
  }
};

void Write(CharBuffer& buffer, Model& model, int size, unsigned char first) {
  std::vector<unsigned char> source;
  for (int i = 0; i < size; ++i) source.push_back(static_cast<unsigned char>(first + i));
  source.resize(source.size() + 1);
  buffer.Write(source.data(), size);
  if (size <= 0) return;
  const std::size_t count = static_cast<std::size_t>(size);
  if (model.position + count >= model.capacity) model.Grow(count, model.position + count);
  std::copy_n(source.begin(), count, model.bytes.begin() + static_cast<std::ptrdiff_t>(model.position));
  model.position += count;
  model.end = std::max(model.end, model.position);
}

// Copies a part of the buffer behind or over itself.
void WriteOwn(CharBuffer& buffer, Model& model, int offset, int size) {
  if (offset < 0 || size <= 0 || static_cast<std::size_t>(offset) + static_cast<std::size_t>(size) > model.capacity) return;
  const std::vector<unsigned char> part(model.bytes.begin() + offset, model.bytes.begin() + offset + size);
  buffer.Write(buffer.GetOffsetBuffer(offset), size);
  const std::size_t count = part.size();
  if (model.position + count >= model.capacity) model.Grow(count, model.position + count);
  std::copy(part.begin(), part.end(), model.bytes.begin() + static_cast<std::ptrdiff_t>(model.position));
  model.position += count;
  model.end = std::max(model.end, model.position);
}

void Read(CharBuffer& buffer, Model& model, int size) {
  std::vector<unsigned char> target(size > 0 ? static_cast<std::size_t>(size) : 1, 77);
  buffer.Read(target.data(), size);
  if (size <= 0) {
    Check(target[0] == 77);
    return;
  }
  for (const unsigned char byte : target) {
    Check(byte == (model.position < model.capacity ? model.bytes[model.position] : 0));
    ++model.position;
  }
}

void SetPos(CharBuffer& buffer, Model& model, int position) {
  buffer.SetPos(position);
  const std::size_t place = static_cast<std::size_t>(std::max(position, 0));
  if (place >= model.capacity) model.Grow(place - model.capacity + 1, 0);
  model.position = place;
}

void GetBuffer(CharBuffer& buffer, Model& model, int size) {
  const unsigned char* const start = buffer.GetBuffer(size);
  Check(start == buffer.Begin());
  if (size <= 0) return;
  const std::size_t count = static_cast<std::size_t>(size);
  if (count > model.capacity) model.Grow(count - model.capacity, 0);
  model.position = model.end = count;
}

void Poke(CharBuffer& buffer, Model& model, int offset, unsigned char byte) {
  unsigned char* const place = buffer.GetOffsetBuffer(offset);
  const std::size_t at = static_cast<std::size_t>(std::max(offset, 0));
  Check((place == nullptr) == (at > model.capacity || model.capacity == 0));
  if (place == nullptr || at == model.capacity) return;
  Check(*place == model.bytes[at]);
  *place = model.bytes[at] = byte;
}

void CheckEqual(const CharBuffer& buffer, const Model& model) {
  Check(buffer.Size() == static_cast<int>(model.end));
  Check(buffer.GetPos() == static_cast<int>(model.position));
  Check((buffer.Begin() == nullptr) == (model.capacity == 0));
  Check(buffer.End() - buffer.Begin() == buffer.Size());
  Check(std::equal(buffer.Begin(), buffer.End(), model.bytes.begin()));
}

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  CharBuffer buffer;
  Model model;
  // Growing more than triples the array each time, and reading moves the position without end: a run keeps to what it may ask for.
  while (!input.Empty() && model.capacity < 50000 && model.position < 50000) {
    const int call = input.Byte() % 8;
    const int number = input.Number();
    switch (call) {
      case 0:
        buffer.Clear();
        model.position = model.end = 0;
        break;
      case 1: Read(buffer, model, number); break;
      case 2: SetPos(buffer, model, number); break;
      case 3: GetBuffer(buffer, model, number); break;
      case 4: Poke(buffer, model, number, input.Byte()); break;
      case 5: WriteOwn(buffer, model, number, input.Number()); break;
      default: Write(buffer, model, number, input.Byte());
    }
    CheckEqual(buffer, model);
  }
}

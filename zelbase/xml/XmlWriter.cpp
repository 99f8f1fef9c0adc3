#include "zelbase/xml/XmlWriter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <ostream>
#include <string_view>
#include <vector>

#include "zelbase/platform/PlatformFiles.h"
#include "zelbase/platform/detail/IntendedWraps.h"

namespace {

constexpr std::size_t kBufferSize = 64 * 1024;
constexpr std::size_t kSlice = 4096;  // of text, between two looks at the room that is left
constexpr std::size_t kLongestReference = 6;

constexpr std::string_view ReferenceFor(char c) {
  switch (c) {
    case '"': return "&quot;";
    case '&': return "&amp;";
    case '\'': return "&apos;";
    case '<': return "&lt;";
    case '>': return "&gt;";
    default: return {};
  }
}

// Whether one of eight bytes needs a reference. Clearing a bit makes a pair of each: of '"' and '&', and of '<' and '>'.
bool HasSpecial(std::uint64_t bytes) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  const auto hasZero = [](std::uint64_t word) ZELBASE_WRAPS { return (word - kOnes) & ~word & (kOnes * 0x80); };
  return (hasZero((bytes & ~(kOnes * 0x04)) ^ (kOnes * '"')) | hasZero(bytes ^ (kOnes * '\'')) |
          hasZero((bytes & ~(kOnes * 0x02)) ^ (kOnes * '<'))) != 0;
}

}  // namespace

class XmlWriter::Sink {
 public:
  virtual ~Sink() = default;
  // False when the bytes did not go out.
  virtual bool Write(const char* bytes, std::size_t size) = 0;
};

class XmlWriter::StreamSink : public Sink {
 public:
  explicit StreamSink(std::ostream& stream) : m_stream(stream) {}
  bool Write(const char* bytes, std::size_t size) override {
    m_stream.write(bytes, static_cast<std::streamsize>(size));
    return m_stream.good();
  }

 private:
  std::ostream& m_stream;
};

class XmlWriter::FileSink : public Sink {
 public:
  explicit FileSink(PlatformFile& file) : m_file(file) {}
  bool Write(const char* bytes, std::size_t size) override {
    std::size_t done = 0;
    return m_file.Write(bytes, size, done) == FileResult::Ok;
  }

 private:
  PlatformFile& m_file;
};

// Collects text in a buffer in front of the sink. Once the sink has failed, nothing more reaches it.
class XmlWriter::Output {
 public:
  explicit Output(Sink& sink) : m_sink(sink), m_buffer(std::make_unique_for_overwrite<char[]>(kBufferSize)) {}

  bool Failed() const { return m_failed; }

  void Put(char c) {
    Require(1);
    m_buffer[m_used++] = c;
  }

  void Append(std::string_view text) {
    if (text.size() > kBufferSize - m_used) return AppendInPieces(text);
    std::memcpy(m_buffer.get() + m_used, text.data(), text.size());
    m_used += text.size();
  }

  void InsertEntityRefs(std::string_view text) {
    for (; text.size() > kSlice; text.remove_prefix(kSlice)) InsertSlice(text.substr(0, kSlice));
    InsertSlice(text);
  }

  void NewLine(std::size_t tabs) {
    Append("\r\n");
    while (tabs > 0 && !m_failed) {
      const std::size_t count = std::min(tabs, kSlice);
      Require(count);
      std::memset(m_buffer.get() + m_used, '\t', count);
      m_used += count;
      tabs -= count;
    }
  }

  bool Flush() {
    if (!m_failed) m_failed = !m_sink.Write(m_buffer.get(), m_used);
    m_used = 0;
    return !m_failed;
  }

 private:
  void Require(std::size_t room) {
    if (room > kBufferSize - m_used) Flush();
  }

  void AppendInPieces(std::string_view text) {
    while (!text.empty()) {
      Require(1);
      const std::size_t count = std::min(text.size(), kBufferSize - m_used);
      std::memcpy(m_buffer.get() + m_used, text.data(), count);
      m_used += count;
      text.remove_prefix(count);
    }
  }

  void InsertSlice(std::string_view text) {
    Require(text.size() * kLongestReference);
    char* to = m_buffer.get() + m_used;
    for (std::uint64_t eight = 0; text.size() >= sizeof eight; text.remove_prefix(sizeof eight)) {
      std::memcpy(&eight, text.data(), sizeof eight);
      if (HasSpecial(eight)) {
        to = PutEach(text.substr(0, sizeof eight), to);
      } else {
        std::memcpy(to, &eight, sizeof eight);
        to += sizeof eight;
      }
    }
    m_used = static_cast<std::size_t>(PutEach(text, to) - m_buffer.get());
  }

  static char* PutEach(std::string_view text, char* to) {
    for (const char c : text) {
      const std::string_view reference = ReferenceFor(c);
      if (reference.empty()) {
        *to++ = c;
      } else {
        std::memcpy(to, reference.data(), reference.size());
        to += reference.size();
      }
    }
    return to;
  }

  Sink& m_sink;
  std::unique_ptr<char[]> m_buffer;
  std::size_t m_used = 0;
  bool m_failed = false;
};

// The text of one tree. Elements whose children are being written stand in a list, not on the stack.
class XmlWriter::Document {
 public:
  explicit Document(Output& output) : m_output(output) {}

  void WriteElement(const XmlElement& root) {
    Begin(root, 1);
    while (!m_open.empty() && !m_output.Failed()) {
      Open& open = m_open.back();
      if (open.next == open.element->m_elements.size()) {
        const Open last = open;
        m_open.pop_back();
        End(*last.element, last.level, last.pretty);
        continue;
      }
      const XmlElement& child = open.element->m_elements[open.next++];
      if (child.HasName()) {
        // Kept: below an element that is not pretty nothing is
        Begin(child, open.pretty ? open.level + 1 : 0);
      } else {
        m_output.InsertEntityRefs(child.m_text);  // Kept: nothing else of it
      }
    }
  }

 private:
  struct Open {
    const XmlElement* element;
    std::size_t next;   // child
    std::size_t level;  // 0 within a run
    bool pretty;
  };

  void Begin(const XmlElement& element, std::size_t level) {
    if (level != 0) m_output.NewLine(level - 1);
    m_output.Put('<');
    m_output.Append(element.m_name);
    for (const auto& [name, value] : element.m_attributes) {
      m_output.Put(' ');
      m_output.Append(name);
      m_output.Append("=\"");
      m_output.InsertEntityRefs(value);
      m_output.Put('"');
    }
    if (!element.HasText() && !element.HasElements()) return m_output.Append("/>");
    m_output.Put('>');
    m_output.InsertEntityRefs(element.m_text);
    if (!element.HasElements()) return End(element, level, false);
    const bool pretty = level != 0 && !element.HasText() && element.FindElement("", 0) == element.m_elements.end();
    m_open.push_back({&element, 0, level, pretty});
  }

  void End(const XmlElement& element, std::size_t level, bool pretty) {
    if (pretty) m_output.NewLine(level - 1);
    m_output.Append("</");
    m_output.Append(element.m_name);
    m_output.Put('>');
  }

  Output& m_output;
  std::vector<Open> m_open;
};

bool XmlWriter::Write(Sink& sink) const {
  Output output(sink);
  output.Append("<?xml version=\"1.0\"?>");
  Document(output).WriteElement(m_root);
  output.NewLine(0);
  return output.Flush();
}

bool XmlWriter::WriteStream(std::ostream& stream) const {
  if (!m_root.HasName()) return false;
  StreamSink sink(stream);
  Write(sink);
  stream.flush();
  return !stream.fail();
}

bool XmlWriter::WriteFile(const char* path) const {
  if (path == nullptr) return false;
  FileResult result = FileResult::Ok;
  const FileOpenRequest request{.path = path, .access = FileRights::Write, .disposition = FileDisposition::CreateAlways};
  const auto file = PlatformService<PlatformFiles>::Current().Open(request, result);
  // Kept: the file is cut before the root is looked at
  if (file == nullptr || !m_root.HasName()) return false;
  FileSink sink(*file);
  return Write(sink);
}

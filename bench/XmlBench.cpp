// Reading and writing ten megabytes of XML beside two well-known libraries of its kind: elements with a few attributes as
// settings have them, elements with numbers as text, and long texts. A reading includes the end of its tree.

#include <pugixml.hpp>
#include <tinyxml2.h>

#include <cstddef>
#include <cstdlib>
#include <ostream>
#include <random>
#include <streambuf>
#include <string>

#include "bench/Compare.h"
#include "zelbase/xml/XmlElement.h"
#include "zelbase/xml/XmlReader.h"
#include "zelbase/xml/XmlWriter.h"

namespace {

constexpr std::size_t kSize = 10000000;

// As much of a document as is wanted, one group of elements after another.
template <class Group>
std::string MakeDocument(Group group) {
  std::mt19937 random(14);
  std::string text = "<?xml version=\"1.0\"?>\r\n<survey>\r\n";
  while (text.size() < kSize) text += group(random);
  return text + "</survey>\r\n";
}

std::string Number(std::mt19937& random) { return std::to_string(static_cast<double>(random()) / 1000.0); }

std::string Settings(std::mt19937& random) {
  std::string text = "\t<vessel name=\"Zuiderkruis " + std::to_string(random() % 100) + "\" id=\"" + std::to_string(random()) +
                     "\" active=\"true\">\r\n";
  for (int i = 0; i < 5; ++i) {
    text += "\t\t<sensor type=\"echo sounder\" x=\"" + Number(random) + "\" y=\"" + Number(random) + "\"/>\r\n";
  }
  text += "\t\t<remark>Draught &lt; 3 m</remark>\r\n\t\t<colour>" + std::to_string(random()) + "</colour>\r\n";
  return text + "\t</vessel>\r\n";
}

std::string Points(std::mt19937& random) {
  return "\t<point>\r\n\t\t<x>" + Number(random) + "</x>\r\n\t\t<y>" + Number(random) + "</y>\r\n\t\t<z>" + Number(random) +
         "</z>\r\n\t</point>\r\n";
}

std::string Texts(std::mt19937& random) {
  std::string text = "\t<note>";
  for (int i = 0; i < 40; ++i) text += "words about the survey of the day " + std::to_string(random() % 1000) + ' ';
  return text + "</note>\r\n";
}

// Counts what is written, and keeps none of it.
class CountingStream : public std::streambuf, public pugi::xml_writer {
 public:
  std::size_t count = 0;
  void write(const void*, std::size_t size) override { count += size; }

 protected:
  std::streamsize xsputn(const char*, std::streamsize size) override {
    count += static_cast<std::size_t>(size);
    return size;
  }
};

bool ReadOurs(const std::string& text, XmlElement& root) {
  return XmlReader(root).ReadData(text.data(), static_cast<unsigned int>(text.size()));
}

void Compare(Comparison& table, const std::string& what, const std::string& text) {
  const auto size = static_cast<double>(text.size());
  const auto ours = [&] {
    XmlElement root;
    Keep(ReadOurs(text, root));
  };
  const auto theirs = [&] {
    pugi::xml_document document;
    Keep(document.load_buffer(text.data(), text.size()));
  };
  table.Row("reading " + what + " (tinyxml2)", size, "B", 1.5, ours, [&] {
    tinyxml2::XMLDocument document;
    Keep(document.Parse(text.data(), text.size()));
  });
  // The aim is half; its nodes are 40 and 64 bytes in an arena, ours are values with strings of their own.
  table.Row("reading " + what + " (pugixml)", size, "B", Comparison::kNoBar, ours, theirs);

  XmlElement root;
  pugi::xml_document document;
  if (!ReadOurs(text, root) || !document.load_buffer(text.data(), text.size())) std::abort();
  table.Row(
      "writing " + what + " (pugixml)", size, "B", 0.5,
      [&] {
        CountingStream buffer;
        std::ostream stream(&buffer);
        Keep(XmlWriter(root).WriteStream(stream));
        Keep(buffer.count);
      },
      [&] {
        CountingStream writer;
        document.save(writer);
        Keep(writer.count);
      });
  table.Row(
      "copying " + what + " (pugixml)", size, "B", Comparison::kNoBar,
      [&] {
        const XmlElement copy(root);
        Keep(copy.ElementCount());
      },
      [&] {
        pugi::xml_document copy;
        copy.reset(document);
        Keep(copy.first_child());
      });
}

}  // namespace

int main() {
  Comparison table("XML text and trees, 10 MB", 5);
  Compare(table, "attributes", MakeDocument(Settings));
  Compare(table, "numbers", MakeDocument(Points));
  Compare(table, "texts", MakeDocument(Texts));
  return table.Finish();
}

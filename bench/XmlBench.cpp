// Reading and writing XML, a tenth of a megabyte to ten, beside two well-known libraries of its kind:
// elements with a few attributes as settings have them, elements with numbers as text, and long texts. A
// reading includes the end of its tree.

#include <tinyxml2.h>
#include <pugixml.hpp>

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

constexpr std::size_t kBarSize = 10000000;

// As much of a document as is wanted, one group of elements after another.
template <class Group>
std::string MakeDocument(std::size_t size, Group group) {
  std::mt19937 random(14);
  std::string text = "<?xml version=\"1.0\"?>\r\n<survey>\r\n";
  while (text.size() < size) text += group(random);
  return text + "</survey>\r\n";
}

std::string Number(std::mt19937& random) { return std::to_string(static_cast<double>(random()) / 1000.0); }

std::string Settings(std::mt19937& random) {
  std::string text =
      "\t<vessel name=\"Zuiderkruis " + std::to_string(random() % 100) + "\" id=\"" + std::to_string(random()) + "\" active=\"true\">\r\n";
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
  const auto limit = [&] { ReadOnce(text); };
  const auto ours = [&] {
    XmlElement root;
    Keep(ReadOurs(text, root));
  };
  const auto theirs = [&] {
    pugi::xml_document document;
    Keep(document.load_buffer(text.data(), text.size()));
  };
  table.Row(
      "reading " + what + " (tinyxml2)", size, "B", Comparison::BarAt(text.size() >= kBarSize, 1.5), ours,
      [&] {
        tinyxml2::XMLDocument document;
        Keep(document.Parse(text.data(), text.size()));
      },
      limit);
  // The aim is half; its nodes are 40 and 64 bytes in an arena, ours are values with strings of their own.
  table.Row("reading " + what + " (pugixml)", size, "B", Comparison::kNoBar, ours, theirs, limit);

  XmlElement root;
  pugi::xml_document document;
  if (!ReadOurs(text, root) || !document.load_buffer(text.data(), text.size())) std::abort();
  table.Row(
      "writing " + what + " (pugixml)", size, "B", Comparison::BarAt(text.size() >= kBarSize, 0.5),
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
  bool allMet = true;
  for (const std::size_t size : {std::size_t{100000}, std::size_t{1000000}, kBarSize}) {
    const std::string title = "XML text and trees, " + Grouped(size / 1000) + " kB";
    Comparison table(title.c_str(), 5);
    Compare(table, "attributes", MakeDocument(size, Settings));
    Compare(table, "numbers", MakeDocument(size, Points));
    Compare(table, "texts", MakeDocument(size, Texts));
    allMet = table.Finish() == 0 && allMet;
  }
  return allMet ? 0 : 1;
}

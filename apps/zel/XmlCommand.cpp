#include "XmlCommand.h"

#include <iostream>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>
#include <vector>

#include "OutputFile.h"
#include "SettingsFile.h"
#include "TextEdge.h"
#include "zelbase/xml/XmlElement.h"
#include "zelbase/xml/XmlFault.h"
#include "zelbase/xml/XmlReader.h"
#include "zelbase/xml/XmlWriter.h"

namespace zel {
namespace {

struct Arguments {
  std::vector<std::string> files;
  std::string output;
};

// Reads a file and tells what was found in it: a refusal, or an end before the text's. `read` is the reader's own answer.
// True when there was nothing to tell.
bool Read(const std::string& path, XmlElement& root, bool& read) {
  XmlReader reader(root);
  read = reader.ReadFile(ToSuitePath(path).c_str());
  const XmlReport& report = reader.LastReport();
  if (report.fault == XmlFault::None) return read;
  const std::string place = report.line == 0 ? path : path + ":" + std::to_string(report.line) + ":" + std::to_string(report.column);
  const bool partly = read && report.fault != XmlFault::NoElement;
  Fail(place + ": " + XmlFaultText(report.fault) + (partly ? "; what stands before it was read" : ""));
  return false;
}

// ---- check ----

struct Size {
  std::size_t elements = 0, attributes = 0, texts = 0, depth = 0;
};

// Walks level by level, so that the depth of a file costs no stack.
Size SizeOf(const XmlElement& root) {
  Size size;
  std::vector<const XmlElement*> level = {&root};
  while (!level.empty()) {
    std::vector<const XmlElement*> below;
    std::size_t named = 0;
    for (const XmlElement* const element : level) {
      if (element->HasName()) ++named;
      if (element->HasText()) ++size.texts;
      size.attributes += element->AttributeCount();
      for (unsigned int i = 0; i < element->ElementCount(); ++i) below.push_back(&element->GetElementByIndex(i));
    }
    size.elements += named;
    if (named > 0) ++size.depth;
    level = std::move(below);
  }
  return size;
}

int Check(const Arguments& arguments) {
  int exitCode = kDone;
  for (const std::string& path : arguments.files) {
    XmlElement root;
    bool read = false;
    if (!Read(path, root, read)) exitCode = kFoundWrong;
    if (!read) continue;
    const Size size = SizeOf(root);
    std::cout << path << ": " << Counted(size.elements, "element", "elements") << ", "
              << Counted(size.attributes, "attribute", "attributes") << ", " << Counted(size.texts, "text", "texts") << ", "
              << Counted(size.depth, "level", "levels") << '\n';
  }
  return exitCode;
}

// ---- print ----

// What is written to the stream goes into a file, and is not kept: indenting a deep tree makes a text of its depth squared.
class FileBuffer : public std::streambuf {
 public:
  explicit FileBuffer(OutputFile& file) : m_file(file) {}

 protected:
  std::streamsize xsputn(const char* bytes, std::streamsize size) override {
    m_file.Write({bytes, static_cast<std::size_t>(size)});
    return m_file.IsGood() ? size : 0;
  }

 private:
  OutputFile& m_file;
};

bool WriteTo(const std::string& path, const XmlElement& root) {
  OutputFile file(path);
  FileBuffer buffer(file);
  std::ostream stream(&buffer);
  return XmlWriter(root).WriteStream(stream) && file.Finish();
}

int Print(const Arguments& arguments) {
  const std::string& path = arguments.files.front();
  XmlElement root;
  bool read = false;
  const bool good = Read(path, root, read);
  if (!read) return kFoundWrong;
  if (!root.HasName()) return Fail("\"" + path + "\" has nothing to print");
  if (arguments.output.empty()) {
    XmlWriter(root).WriteStream(std::cout);  // a failure is told at the program's end
  } else if (!WriteTo(arguments.output, root)) {
    return Fail("cannot write \"" + arguments.output + "\"");
  }
  return good ? kDone : kFoundWrong;
}

}  // namespace

void AddXmlCommand(CLI::App& program, int& exitCode) {
  CLI::App* const xml = program.add_subcommand("xml", "Read XML by the suite's rules");
  xml->require_subcommand(1);
  const auto arguments = std::make_shared<Arguments>();

  CLI::App* app = xml->add_subcommand("check", "What is in files, and where and why one is refused or ends early");
  app->add_option("FILE", arguments->files, "XML files")->required();
  app->footer("Example:\n  zel xml check samples/xml/project.xml\n\nExit code: 0, or 1 when there was something to tell of a file.\n");
  app->callback([arguments, &exitCode] { exitCode = Check(*arguments); });

  app = xml->add_subcommand("print", "A file as the suite writes it");
  app->add_option("FILE", arguments->files, "XML file")->required()->expected(1);
  app->add_option("-o,--output", arguments->output, "File to write, instead of printing");
  app->footer(
      "Example:\n  zel xml print samples/xml/project.xml -o project.xml\n\n"
      "Exit code: 0, or 1 when FILE was refused, ended early or has no element.\n");
  app->callback([arguments, &exitCode] { exitCode = Print(*arguments); });
}

}  // namespace zel

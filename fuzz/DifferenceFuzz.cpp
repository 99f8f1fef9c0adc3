// Any bytes as two settings texts and a difference, parted by the byte 0x1E: compared, told apart, applied and listed by the
// library, and by a slow second transcription.

#include <cstdint>
#include <string>
#include <utility>

#include "fuzz/Require.h"
#include "fuzz/Target.h"
#include "tests/config/SecondDifference.h"
#include "tests/config/SettingsTestHelp.h"
#include "zelbase/config/SettingsDifference.h"

namespace {

constexpr char kSeparator = 0x1E;

std::string TakeText(std::string& bytes) {
  const std::size_t end = bytes.find(kSeparator);
  const std::string text = bytes.substr(0, end);
  bytes.erase(0, end == std::string::npos ? end : end + 1);
  return text;
}

Picture WithoutChecksum(Picture picture) {
  picture.erase("Checksum");
  return picture;
}

// What a text keeps of a store: all but the keys that become comments.
Picture WithoutComments(Picture picture) {
  for (auto& [name, items] : picture) std::erase_if(items, [](const auto& item) { return item.first.starts_with(';'); });
  return picture;
}

void Compare(const FileObject& a, const FileObject& b) {
  Require((a == b) == second::Equal(a, b), "equality");
  Require((a != b) == !second::Equal(a, b), "inequality");
  Require(a == a, "an object equals itself");
}

// A difference is made, travels as a text, and is applied to the older file.
void Carry(const FileObject& newer, const FileObject& older) {
  FileObject difference;
  Require(newer.GetDifference(older, difference), "a difference can be made");
  Picture expected;
  second::GetDifference(second::ListingOf(newer), second::ListingOf(older), expected);
  Require(PictureOf(difference) == expected, "the difference");

  FileObject again;
  ReadFrom(again, WrittenBy(difference));
  Require(PictureOf(again) == WithoutComments(expected), "the difference read again");

  FileObject target(older);
  const bool applied = target.ApplyDifference(difference);
  if (!second::TravelsWhole(newer, older)) return;
  Require(applied, "a whole difference applies");
  Require(WithoutChecksum(PictureOf(target)) == WithoutChecksum(PictureOf(newer)), "the older file has become the newer one");
}

void CarryIntoAnOperand(const FileObject& newer, const FileObject& older) {
  for (const FileObject* operand : {&newer, &older}) {
    FileObject expected(*operand);
    newer.GetDifference(older, expected);
    FileObject own(*operand);
    operand == &newer ? own.GetDifference(older, own) : newer.GetDifference(own, own);
    Require(PictureOf(own) == PictureOf(expected), "a difference written into an operand");
  }
}

void Apply(const FileObject& difference, const FileObject& settings) {
  const second::Listing operations = second::ListingOf(difference);
  Require(FileObject().HasDifferences(difference) == (second::CountOperations(operations) > 0), "HasDifferences");
  FileObject target(settings);
  Picture expected = PictureOf(target);
  Require(target.ApplyDifference(difference) == second::ApplyDifference(expected, operations), "the result of applying");
  Require(PictureOf(target) == expected, "what was applied");

  FileObject itself(difference);
  FileObject copied(difference);
  Require(itself.ApplyDifference(itself) == copied.ApplyDifference(FileObject(difference)), "applied to itself");
  Require(PictureOf(itself) == PictureOf(copied), "what was applied to itself");
}

void List(const FileObject& newer, const FileObject& older, const FileObject& difference) {
  const int operations = second::CountOperations(second::ListingOf(difference));
  Require(static_cast<int>(ListDifference(difference, older).size()) == operations, "each operation is listed");
  const SettingsChanges changes = ListSettingsChanges(newer, older);
  const Picture now = PictureOf(newer);
  const Picture before = PictureOf(older);
  for (const SettingsChange& change : changes) {
    const auto has = [&change](const Picture& picture) {
      return picture.count(change.section) != 0 && picture.at(change.section).count(change.key) != 0;
    };
    Require(has(before) == (change.kind != SettingsChangeKind::Added), "what the older file has");
    Require(has(now) == (change.kind != SettingsChangeKind::Removed), "what the newer file has");
    Require(!has(before) || before.at(change.section).at(change.key) == change.oldValue, "the old value");
    Require(!has(now) || now.at(change.section).at(change.key) == change.newValue, "the new value");
  }
}

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  std::string bytes(reinterpret_cast<const char*>(data), size);
  FileObject newer;
  FileObject older;
  FileObject difference;
  ReadFrom(newer, TakeText(bytes));
  ReadFrom(older, TakeText(bytes));
  ReadFrom(difference, TakeText(bytes));
  // One way or the other: an input and the same with one byte more behind it go both ways.
  if (size % 2 == 1) std::swap(newer, older);
  Compare(newer, older);
  Carry(newer, older);
  CarryIntoAnOperand(newer, older);
  Apply(difference, newer);
  List(newer, older, difference);
}

#include "zelbase/xml/XmlElement.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace {

const XmlElement* const kNothing = nullptr;

// <survey date="today"> with the children a, b, a and a text.
XmlElement Sample() {
  XmlElement element("survey");
  element.SetText("text");
  element.SetAttribute("date", "today");
  element.Add("a").SetText("first");
  element.Add("b").Add("inner").SetText("deep");
  element.Add("a").SetText("second");
  element.Add("").SetText("run");
  return element;
}

}  // namespace

TEST(XmlElement, ANewOneIsEmptyAndMayHaveAName) {
  const XmlElement empty;
  EXPECT_FALSE(empty.HasName());
  EXPECT_FALSE(empty.HasText());
  EXPECT_FALSE(empty.HasAttributes());
  EXPECT_FALSE(empty.HasElements());
  const XmlElement named("a");
  EXPECT_EQ(named.Name(), "a");
  EXPECT_FALSE(named.HasText());
}

TEST(XmlElement, NameAndTextAreSetAndGiven) {
  XmlElement element;
  element.SetName("a");
  element.SetText("x\0y");
  EXPECT_TRUE(element.HasName());
  EXPECT_TRUE(element.HasText());
  EXPECT_EQ(element.Name(), "a");
  EXPECT_EQ(element.Text(), "x");
  static_assert(std::is_reference_v<decltype(element.Name())> && std::is_reference_v<decltype(element.Text())>);
}

// Kept: an empty text is a text.
TEST(XmlElement, GetTextOfAnEmptyTextIsTrue) {
  std::string text = "former";
  EXPECT_TRUE(XmlElement("a").GetText(text));
  EXPECT_EQ(text, "");
}

// ---- Attributes ----

// Kept: an attribute set again keeps its place.
TEST(XmlElement, AnAttributeSetTwiceIsOneInItsFirstPlace) {
  XmlElement element;
  element.SetAttribute("a", "1");
  element.SetAttribute("b", "2");
  element.SetAttribute("a", "3");
  ASSERT_EQ(element.AttributeCount(), 2u);
  std::string name, value;
  element.GetAttributeByIndex(0, name, value);
  EXPECT_EQ(name + "=" + value, "a=3");
  element.GetAttributeByIndex(1, name, value);
  EXPECT_EQ(name + "=" + value, "b=2");
}

TEST(XmlElement, AnAbsentAttributeLeavesTheValueAlone) {
  XmlElement element;
  element.SetAttribute("a", "1");
  std::string value = "former";
  EXPECT_FALSE(element.GetAttribute("A", value));
  EXPECT_EQ(value, "former");
  EXPECT_TRUE(element.GetAttribute("a", value));
  EXPECT_EQ(value, "1");
  EXPECT_TRUE(element.HasAttribute("a"));
  EXPECT_FALSE(element.HasAttribute("A"));
}

TEST(XmlElement, AttributesAreRemovedByNameOrAll) {
  XmlElement element;
  for (const char* name : {"a", "b", "c"}) element.SetAttribute(name, "1");
  EXPECT_TRUE(element.RemoveAttribute("b"));
  EXPECT_FALSE(element.RemoveAttribute("b"));
  EXPECT_EQ(element.AttributeCount(), 2u);
  element.RemoveAllAttributes();
  EXPECT_FALSE(element.HasAttributes());
}

TEST(XmlElement, AnAttributeIndexOutOfRangeThrowsAndLeavesTheTexts) {
  XmlElement element;
  element.SetAttribute("a", "1");
  std::string name = "n", value = "v";
  EXPECT_THROW(element.GetAttributeByIndex(1, name, value), std::out_of_range);
  EXPECT_EQ(name + value, "nv");
}

// ---- Children ----

TEST(XmlElement, FindCountsAmongChildrenOfTheName) {
  const XmlElement element = Sample();
  EXPECT_EQ(element.Find("a", 0)->Text(), "first");
  EXPECT_EQ(element.Find("a", 1)->Text(), "second");
  EXPECT_EQ(element.Find("a", 1), &element.GetElementByIndex(2));
  EXPECT_EQ(element.Find("a", 2), nullptr);
  EXPECT_EQ(element.Find("A", 0), nullptr);
  EXPECT_TRUE(element.Has("b", 0));
  EXPECT_FALSE(element.Has("b", 1));
  EXPECT_FALSE(element.Has("b", std::numeric_limits<unsigned int>::max()));
}

TEST(XmlElement, FindCreateMakesWhatIsMissing) {
  XmlElement element;
  element.Add("a").SetText("first");
  EXPECT_EQ(element.Find("a", 1), nullptr);
  XmlElement& made = element.FindCreate("a", 3);
  ASSERT_EQ(element.ElementCount(), 4u);
  EXPECT_EQ(&made, &element.GetElementByIndex(3));
  for (unsigned int i = 1; i < 4; ++i) EXPECT_EQ(element.GetElementByIndex(i), XmlElement("a"));
  EXPECT_EQ(element.FindCreate("a", 0).Text(), "first");
  EXPECT_EQ(element.ElementCount(), 4u);
}

// Each call makes the child that is next: every size of the list is passed, with room in it and without.
TEST(XmlElement, FindCreateMakesOneChildAfterAnother) {
  XmlElement element;
  for (unsigned int i = 0; i < 100; ++i) {
    element.FindCreate("a", i).SetText(std::to_string(i));
    ASSERT_EQ(element.ElementCount(), i + 1);
  }
  for (unsigned int i = 0; i < 100; ++i) EXPECT_EQ(element.GetElementByIndex(i).Text(), std::to_string(i));
}

TEST(XmlElement, FindCreateCountsOnlyItsOwnName) {
  XmlElement element = Sample();
  element.FindCreate("b", 2);
  EXPECT_EQ(element.CountElements("b"), 3u);
  EXPECT_EQ(element.ElementCount(), 6u);
  EXPECT_EQ(element.CountElements("a"), 2u);
}

// Kept: the writer asks for a text child this way.
TEST(XmlElement, HasOfTheEmptyNameMeansATextChild) {
  XmlElement element("a");
  element.SetText("own text is no child");
  EXPECT_FALSE(element.Has("", 0));
  element.Add("b");
  EXPECT_FALSE(element.Has("", 0));
  element.Add("").SetText("run");
  EXPECT_TRUE(element.Has("", 0));
}

TEST(XmlElement, GetElementNameIndexIsWhatFindNeeds) {
  const XmlElement element = Sample();
  EXPECT_EQ(element.GetElementNameIndex(2), 1u);
  for (unsigned int i = 0; i < element.ElementCount(); ++i) {
    const XmlElement& child = element.GetElementByIndex(i);
    EXPECT_EQ(element.Find(child.Name(), element.GetElementNameIndex(i)), &child);
  }
}

// Kept: 0 for the first, also when there is none.
TEST(XmlElement, GetElementNameIndexOfZeroIsZeroWithoutChildren) {
  EXPECT_EQ(XmlElement().GetElementNameIndex(0), 0u);
  EXPECT_THROW(XmlElement().GetElementNameIndex(1), std::out_of_range);
}

TEST(XmlElement, AnElementIndexOutOfRangeThrows) {
  XmlElement element = Sample();
  EXPECT_THROW(element.GetElementByIndex(4), std::out_of_range);
  EXPECT_THROW(std::as_const(element).GetElementByIndex(4), std::out_of_range);
}

TEST(XmlElement, RemoveTakesTheIndexthOfItsName) {
  XmlElement element = Sample();
  EXPECT_TRUE(element.Remove("a", 1));
  EXPECT_FALSE(element.Remove("a", 1));
  EXPECT_EQ(element.Find("a", 0)->Text(), "first");
  EXPECT_TRUE(element.Remove("a", 0));
  EXPECT_EQ(element.ElementCount(), 2u);
  EXPECT_EQ(element.GetElementByIndex(0).Find("inner", 0)->Text(), "deep");
}

TEST(XmlElement, RemoveElementsTakesAllOfItsName) {
  XmlElement element = Sample();
  element.RemoveElements("a");
  ASSERT_EQ(element.ElementCount(), 2u);
  EXPECT_EQ(element.GetElementByIndex(0).Name(), "b");
  EXPECT_EQ(element.GetElementByIndex(1).Text(), "run");
  element.RemoveElements("none");
  EXPECT_EQ(element.ElementCount(), 2u);
  element.RemoveAllElements();
  EXPECT_FALSE(element.HasElements());
}

TEST(XmlElement, AnElementsOwnPartsMayBeHandedToIt) {
  XmlElement element = Sample();
  element.RemoveElements(element.GetElementByIndex(0).Name());
  EXPECT_EQ(element.CountElements("a"), 0u);
  EXPECT_EQ(element.ElementCount(), 2u);
  for (int i = 0; i < 20; ++i) element.Add(element.GetElementByIndex(0).Name());
  EXPECT_EQ(element.CountElements("b"), 21u);
  element.FindCreate(element.GetElementByIndex(0).Name(), 99);
  EXPECT_EQ(element.CountElements("b"), 100u);
  element.SetName(element.Name());
  EXPECT_EQ(element.Name(), "survey");
}

TEST(XmlElement, ClearEmptiesEverything) {
  XmlElement element = Sample();
  element.Clear();
  EXPECT_EQ(element, XmlElement());
}

// ---- Null ----

TEST(XmlElement, QueriesThroughNullAnswerAsForAnEmptyElement) {
  std::string text = "former";
  EXPECT_FALSE(XmlElement::HasName(kNothing));
  EXPECT_FALSE(XmlElement::HasText(kNothing));
  EXPECT_FALSE(XmlElement::GetText(kNothing, text));
  EXPECT_FALSE(XmlElement::HasAttributes(kNothing));
  EXPECT_EQ(XmlElement::AttributeCount(kNothing), 0u);
  EXPECT_FALSE(XmlElement::HasAttribute(kNothing, "a"));
  EXPECT_FALSE(XmlElement::GetAttribute(kNothing, "a", text));
  EXPECT_EQ(XmlElement::ElementCount(kNothing), 0u);
  EXPECT_FALSE(XmlElement::HasElements(kNothing));
  EXPECT_EQ(XmlElement::CountElements(kNothing, "a"), 0u);
  EXPECT_EQ(XmlElement::Find(kNothing, "a", 0), nullptr);
  EXPECT_FALSE(XmlElement::Has(kNothing, "a", 0));
  EXPECT_EQ(text, "former");
}

TEST(XmlElement, QueriesThroughAPointerAnswerAsTheMembersDo) {
  const XmlElement element = Sample();
  std::string text;
  EXPECT_TRUE(XmlElement::HasName(&element));
  EXPECT_TRUE(XmlElement::HasText(&element));
  EXPECT_TRUE(XmlElement::GetText(&element, text));
  EXPECT_EQ(text, "text");
  EXPECT_TRUE(XmlElement::HasAttributes(&element));
  EXPECT_EQ(XmlElement::AttributeCount(&element), 1u);
  EXPECT_TRUE(XmlElement::HasAttribute(&element, "date"));
  EXPECT_TRUE(XmlElement::GetAttribute(&element, "date", text));
  EXPECT_EQ(text, "today");
  EXPECT_EQ(XmlElement::ElementCount(&element), 4u);
  EXPECT_TRUE(XmlElement::HasElements(&element));
  EXPECT_EQ(XmlElement::CountElements(&element, "a"), 2u);
  EXPECT_TRUE(XmlElement::Has(&element, "a", 1));
  EXPECT_EQ(XmlElement::Find(XmlElement::Find(&element, "b", 0), "inner", 0)->Text(), "deep");
  EXPECT_EQ(XmlElement::Find(XmlElement::Find(&element, "none", 0), "inner", 0), nullptr);
}

TEST(XmlElement, QueriesThroughAPointerToAnEmptyElementFindNothing) {
  const XmlElement empty;
  std::string text = "former";
  EXPECT_FALSE(XmlElement::HasName(&empty));
  EXPECT_FALSE(XmlElement::HasText(&empty));
  EXPECT_FALSE(XmlElement::HasAttributes(&empty));
  EXPECT_FALSE(XmlElement::HasAttribute(&empty, "date"));
  EXPECT_FALSE(XmlElement::GetAttribute(&empty, "date", text));
  EXPECT_EQ(text, "former");
  EXPECT_FALSE(XmlElement::HasElements(&empty));
  EXPECT_FALSE(XmlElement::Has(&empty, "a", 0));
  // Kept: an empty text is a text, here too.
  EXPECT_TRUE(XmlElement::GetText(&empty, text));
  EXPECT_EQ(text, "");
}

// ---- Values ----

TEST(XmlElement, ACopyIsIndependentInAllItsSubtree) {
  XmlElement source = Sample();
  XmlElement copy(source);
  EXPECT_EQ(copy, source);
  copy.GetElementByIndex(1).GetElementByIndex(0).SetText("changed");
  copy.SetAttribute("date", "tomorrow");
  EXPECT_EQ(source, Sample());
  source.Clear();
  EXPECT_EQ(copy.GetElementByIndex(1).GetElementByIndex(0).Text(), "changed");
}

TEST(XmlElement, AssignmentFromItselfOrItsDescendantIsFromACopy) {
  XmlElement element = Sample();
  const XmlElement& same = element;
  element = same;
  EXPECT_EQ(element, Sample());
  element = element.GetElementByIndex(1);
  EXPECT_EQ(element, Sample().GetElementByIndex(1));
  element = element.GetElementByIndex(0);
  EXPECT_EQ(element.Text(), "deep");
}

TEST(XmlElement, MovingFromItselfOrItsDescendantKeepsTheValue) {
  XmlElement element = Sample();
  XmlElement& same = element;
  element = std::move(same);
  EXPECT_EQ(element, Sample());
  element = std::move(element.GetElementByIndex(1));
  EXPECT_EQ(element, Sample().GetElementByIndex(1));
}

TEST(XmlElement, SwapExchangesAllMembers) {
  XmlElement one = Sample();
  XmlElement other("other");
  other.Add("x");
  const XmlElement former = other;
  one.Swap(other);
  EXPECT_EQ(other, Sample());
  EXPECT_EQ(one, former);
}

TEST(XmlElement, EqualityLooksAtEveryPartInOrder) {
  const XmlElement sample = Sample();
  const auto differs = [&](auto change) {
    XmlElement changed = sample;
    change(changed);
    return changed != sample;
  };
  EXPECT_FALSE(differs([](XmlElement&) {}));
  EXPECT_TRUE(differs([](XmlElement& e) { e.SetName("Survey"); }));
  EXPECT_TRUE(differs([](XmlElement& e) { e.SetText(""); }));
  EXPECT_TRUE(differs([](XmlElement& e) { e.SetAttribute("date", ""); }));
  EXPECT_TRUE(differs([](XmlElement& e) { e.SetAttribute("more", ""); }));
  EXPECT_TRUE(differs([](XmlElement& e) { e.Add("a"); }));
  EXPECT_TRUE(differs([](XmlElement& e) { e.GetElementByIndex(0).Swap(e.GetElementByIndex(2)); }));
  EXPECT_TRUE(differs([](XmlElement& e) { e.GetElementByIndex(1).GetElementByIndex(0).SetText(""); }));
}

// Children move when their list grows; a copy of each instead would make adding quadratic in a tree's size.
TEST(XmlElement, MovesThrowNothing) {
  static_assert(std::is_nothrow_move_constructible_v<XmlElement>);
  static_assert(std::is_nothrow_move_assignable_v<XmlElement>);
  static_assert(!std::is_polymorphic_v<XmlElement>);
  XmlElement element("root");
  element.Add("first").Add("grandchild");
  const XmlElement* const grandchild = &element.GetElementByIndex(0).GetElementByIndex(0);
  for (int i = 0; i < 1000; ++i) element.Add("more");
  EXPECT_EQ(&element.GetElementByIndex(0).GetElementByIndex(0), grandchild);
}

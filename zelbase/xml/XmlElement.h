// A small document tree in memory: an element with its attributes, its text and its children. Neighbours: XmlReader.h and
// XmlWriter.h, which take it from XML text and back.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "zelbase/platform/ZelBaseApi.h"

// A plain value: a copy is a copy of the whole subtree, and no child knows its parent. Texts are 8-bit, of whatever encoding;
// names are compared with exactly their case.
//
//   XmlElement survey("survey");
//   survey.Add("vessel").SetAttribute("name", "Zuiderkruis");
//   const XmlElement* vessel = survey.Find("vessel", 0);
//   std::string name;
//   if (XmlElement::GetAttribute(vessel, "name", name)) ...     // also when there is no vessel
//
// A child with an empty name is a run of text between other children; that keeps mixed content in order. An element's own
// text comes before its children.
//
// Attributes are in the order in which they were first set, each name once. Children are in document order; names repeat.
//
// Twelve queries have a second, static form that takes the element first, and answer through a null pointer as through an empty
// element, so that what Find gives can be asked further without a test. (A member call through null is undefined.)
//
// Copying, comparing and destroying take no more stack for a deep tree than for a flat one, and destroying takes no memory.
// Names are taken by value, so that an element's own parts may be handed to it. One thread at a time; any number may read.
class ZELBASE_API XmlElement {
 public:
  XmlElement() = default;
  explicit XmlElement(std::string name) : m_name(std::move(name)) {}
  XmlElement(const XmlElement& other);
  XmlElement(XmlElement&& other) noexcept = default;
  // Takes a full copy first: an element may be assigned its own descendant, and itself.
  XmlElement& operator=(const XmlElement& other);
  XmlElement& operator=(XmlElement&& other) noexcept;
  ~XmlElement() {
    if (!m_elements.empty()) DestroyChildren();
  }

  // Exchanges name, text, attributes and children. Neither may be a descendant of the other.
  void Swap(XmlElement& other) noexcept;

  // Equal in name, text, attributes and children, all in order.
  friend ZELBASE_API bool operator==(const XmlElement& a, const XmlElement& b);

  // ---- Name and text ----

  void SetName(std::string name) { m_name = std::move(name); }
  const std::string& Name() const { return m_name; }
  // False for a run of text.
  bool HasName() const { return !m_name.empty(); }
  static bool HasName(const XmlElement* element) { return element != nullptr && element->HasName(); }

  void SetText(std::string text) { m_text = std::move(text); }
  const std::string& Text() const { return m_text; }
  bool HasText() const { return !m_text.empty(); }
  static bool HasText(const XmlElement* element) { return element != nullptr && element->HasText(); }
  // Copies the text. Kept: true for an empty text as well; false, with `text` left alone, only through null.
  bool GetText(std::string& text) const;
  static bool GetText(const XmlElement* element, std::string& text) { return element == nullptr ? false : element->GetText(text); }

  // ---- Attributes ----

  // Sets the value of the attribute of this name, which keeps its place, or appends one. Looks through all of them.
  void SetAttribute(std::string name, std::string value);
  // False, with `value` left alone, if there is none.
  bool GetAttribute(std::string name, std::string& value) const;
  static bool GetAttribute(const XmlElement* element, std::string name, std::string& value);
  bool HasAttribute(std::string name) const;
  static bool HasAttribute(const XmlElement* element, std::string name);
  bool HasAttributes() const { return !m_attributes.empty(); }
  static bool HasAttributes(const XmlElement* element) { return element != nullptr && element->HasAttributes(); }
  unsigned int AttributeCount() const { return static_cast<unsigned int>(m_attributes.size()); }
  static unsigned int AttributeCount(const XmlElement* element) { return element == nullptr ? 0 : element->AttributeCount(); }
  // Throws std::out_of_range for an index that is not below AttributeCount(); both texts are left alone then.
  void GetAttributeByIndex(unsigned int index, std::string& name, std::string& value) const;
  // Removes the first of that name; false if there is none.
  bool RemoveAttribute(std::string name);
  void RemoveAllAttributes() { m_attributes.clear(); }

  // ---- Children. References and pointers to children hold until this element's children next change. ----

  // Appends a child without text.
  XmlElement& Add(std::string name);

  // The index-th, from 0, of the children of that name; null if there are not so many.
  const XmlElement* Find(std::string name, unsigned int index) const;
  static const XmlElement* Find(const XmlElement* element, std::string name, unsigned int index);
  // Has("", 0) asks for a run of text.
  bool Has(std::string name, unsigned int index) const;
  static bool Has(const XmlElement* element, std::string name, unsigned int index);
  // As Find; children of that name that are missing up to this one are appended first. Their number is the caller's: memory
  // that cannot be had throws, and nothing has changed.
  XmlElement& FindCreate(std::string name, unsigned int index);

  unsigned int CountElements(std::string name) const;
  static unsigned int CountElements(const XmlElement* element, std::string name);
  unsigned int ElementCount() const { return static_cast<unsigned int>(m_elements.size()); }
  static unsigned int ElementCount(const XmlElement* element) { return element == nullptr ? 0 : element->ElementCount(); }
  bool HasElements() const { return !m_elements.empty(); }
  static bool HasElements(const XmlElement* element) { return element != nullptr && element->HasElements(); }

  // A child by its position. Throws std::out_of_range for one that is not below ElementCount().
  XmlElement& GetElementByIndex(unsigned int index) { return m_elements.at(index); }
  const XmlElement& GetElementByIndex(unsigned int index) const { return m_elements.at(index); }
  // How many of the children before the i-th have its name: what Find needs to find it. Throws std::out_of_range for an i
  // above 0 that is not below ElementCount(). Kept: 0 for 0, without children as well.
  unsigned int GetElementNameIndex(unsigned int i) const;

  // Removes the index-th of the children of that name; false if there is none.
  bool Remove(std::string name, unsigned int index);
  // Removes all children of that name.
  void RemoveElements(std::string name);
  void RemoveAllElements() { m_elements.clear(); }

  // Empties name, text, attributes and children.
  void Clear();

 private:
  friend class XmlReader;
  friend class XmlWriter;

  using Attribute = std::pair<std::string, std::string>;
  struct WithoutChildren {};

  XmlElement(const XmlElement& other, WithoutChildren) : m_name(other.m_name), m_text(other.m_text), m_attributes(other.m_attributes) {}

  std::vector<Attribute>::const_iterator FindAttribute(std::string_view name) const;
  std::vector<XmlElement>::const_iterator FindElement(std::string_view name, unsigned int index) const;
  bool EqualsWithoutChildren(const XmlElement& other) const;
  void DestroyChildren() noexcept;

  std::string m_name;
  std::string m_text;
  std::vector<Attribute> m_attributes;
  std::vector<XmlElement> m_elements;
};

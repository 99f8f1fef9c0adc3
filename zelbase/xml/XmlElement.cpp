#include "zelbase/xml/XmlElement.h"

#include <algorithm>
#include <cstddef>

// Level by level from a list of what is still to be copied, not by recursion: a document may be a million deep.
XmlElement::XmlElement(const XmlElement& other) : XmlElement(other, WithoutChildren{}) {
  std::vector<std::pair<const XmlElement*, XmlElement*>> pending;
  if (other.HasElements()) pending.emplace_back(&other, this);
  while (!pending.empty()) {
    const auto [source, target] = pending.back();
    pending.pop_back();
    target->m_elements.reserve(source->m_elements.size());
    for (const XmlElement& child : source->m_elements) {
      target->m_elements.push_back(XmlElement(child, WithoutChildren{}));
      if (child.HasElements()) pending.emplace_back(&child, &target->m_elements.back());
    }
  }
}

XmlElement& XmlElement::operator=(const XmlElement& other) {
  XmlElement copy(other);
  Swap(copy);
  return *this;
}

XmlElement& XmlElement::operator=(XmlElement&& other) noexcept {
  XmlElement moved(std::move(other));
  Swap(moved);
  return *this;
}

void XmlElement::Swap(XmlElement& other) noexcept {
  m_name.swap(other.m_name);
  m_text.swap(other.m_text);
  m_attributes.swap(other.m_attributes);
  m_elements.swap(other.m_elements);
}

bool XmlElement::EqualsWithoutChildren(const XmlElement& other) const {
  return m_elements.size() == other.m_elements.size() && m_name == other.m_name && m_text == other.m_text &&
         m_attributes == other.m_attributes;
}

bool operator==(const XmlElement& a, const XmlElement& b) {
  if (!a.EqualsWithoutChildren(b)) return false;
  std::vector<std::pair<const XmlElement*, const XmlElement*>> pending{{&a, &b}};
  while (!pending.empty()) {
    const auto [one, other] = pending.back();
    pending.pop_back();
    for (std::size_t i = 0; i < one->m_elements.size(); ++i) {
      const XmlElement& child = one->m_elements[i];
      const XmlElement& twin = other->m_elements[i];
      if (!child.EqualsWithoutChildren(twin)) return false;
      if (child.HasElements()) pending.emplace_back(&child, &twin);
    }
  }
  return true;
}

// Lists of children are hung up in one chain, each on the first element of the list before it, where a tree has such a chain
// already: the first children of first children. The front list of the chain is destroyed after its other children's lists went
// to the end of the chain, or at once if nothing is below them. Nothing is allocated, and nothing recurses by depth.
void XmlElement::DestroyChildren() noexcept {
  const auto endOfChain = [](XmlElement* element) {
    while (!element->m_elements.empty()) element = &element->m_elements.front();
    return element;
  };
  const auto hasElements = [](const XmlElement& element) { return element.HasElements(); };
  std::vector<XmlElement> list = std::move(m_elements);
  XmlElement* last = endOfChain(&list.front());
  while (!list.empty()) {
    for (std::size_t i = 1; i < list.size(); ++i) {
      if (!list[i].HasElements()) continue;
      std::vector<XmlElement> below = std::move(list[i].m_elements);
      if (std::none_of(below.begin(), below.end(), hasElements)) continue;
      last->m_elements = std::move(below);
      last = endOfChain(last);
    }
    std::vector<XmlElement> next = std::move(list.front().m_elements);
    list = std::move(next);
  }
}

bool XmlElement::GetText(std::string& text) const {
  text = m_text;
  return true;  // Kept: an empty text is a text
}

std::vector<XmlElement::Attribute>::const_iterator XmlElement::FindAttribute(std::string_view name) const {
  return std::find_if(m_attributes.begin(), m_attributes.end(), [&](const Attribute& attribute) { return attribute.first == name; });
}

void XmlElement::SetAttribute(std::string name, std::string value) {
  const auto found = FindAttribute(name);
  if (found == m_attributes.end()) {
    m_attributes.emplace_back(std::move(name), std::move(value));
  } else {
    // Kept: an attribute set again stays in its first place
    m_attributes[static_cast<std::size_t>(found - m_attributes.begin())].second = std::move(value);
  }
}

bool XmlElement::GetAttribute(std::string name, std::string& value) const {
  const auto found = FindAttribute(name);
  if (found == m_attributes.end()) return false;
  value = found->second;
  return true;
}

bool XmlElement::GetAttribute(const XmlElement* element, std::string name, std::string& value) {
  return element != nullptr && element->GetAttribute(std::move(name), value);
}

bool XmlElement::HasAttribute(std::string name) const { return FindAttribute(name) != m_attributes.end(); }

bool XmlElement::HasAttribute(const XmlElement* element, std::string name) {
  return element != nullptr && element->HasAttribute(std::move(name));
}

void XmlElement::GetAttributeByIndex(unsigned int index, std::string& name, std::string& value) const {
  const Attribute& attribute = m_attributes.at(index);
  name = attribute.first;
  value = attribute.second;
}

bool XmlElement::RemoveAttribute(std::string name) {
  const auto found = FindAttribute(name);
  if (found == m_attributes.end()) return false;
  m_attributes.erase(found);
  return true;
}

XmlElement& XmlElement::Add(std::string name) { return m_elements.emplace_back(std::move(name)); }

std::vector<XmlElement>::const_iterator XmlElement::FindElement(std::string_view name, unsigned int index) const {
  std::size_t before = 0;
  return std::find_if(m_elements.begin(), m_elements.end(),
                      [&](const XmlElement& child) { return child.m_name == name && before++ == index; });
}

const XmlElement* XmlElement::Find(std::string name, unsigned int index) const {
  const auto found = FindElement(name, index);
  return found == m_elements.end() ? nullptr : &*found;
}

const XmlElement* XmlElement::Find(const XmlElement* element, std::string name, unsigned int index) {
  return element == nullptr ? nullptr : element->Find(std::move(name), index);
}

bool XmlElement::Has(std::string name, unsigned int index) const { return Find(std::move(name), index) != nullptr; }

bool XmlElement::Has(const XmlElement* element, std::string name, unsigned int index) {
  return Find(element, std::move(name), index) != nullptr;
}

XmlElement& XmlElement::FindCreate(std::string name, unsigned int index) {
  const auto found = FindElement(name, index);
  if (found != m_elements.end()) return m_elements[static_cast<std::size_t>(found - m_elements.begin())];
  const std::size_t missing = std::size_t{index} - CountElements(name) + 1;
  const std::size_t needed = m_elements.size() + missing;
  if (needed > m_elements.capacity()) m_elements.reserve(std::max(needed, 2 * m_elements.capacity()));
  while (m_elements.size() < needed) m_elements.emplace_back(name);
  return m_elements.back();
}

unsigned int XmlElement::CountElements(std::string name) const {
  return static_cast<unsigned int>(
      std::count_if(m_elements.begin(), m_elements.end(), [&](const XmlElement& child) { return child.m_name == name; }));
}

unsigned int XmlElement::CountElements(const XmlElement* element, std::string name) {
  return element == nullptr ? 0 : element->CountElements(std::move(name));
}

unsigned int XmlElement::GetElementNameIndex(unsigned int i) const {
  if (i == 0) return 0;  // Kept: without children as well
  const std::string& name = m_elements.at(i).m_name;
  return static_cast<unsigned int>(
      std::count_if(m_elements.begin(), m_elements.begin() + i, [&](const XmlElement& child) { return child.m_name == name; }));
}

bool XmlElement::Remove(std::string name, unsigned int index) {
  const auto found = FindElement(name, index);
  if (found == m_elements.end()) return false;
  m_elements.erase(found);
  return true;
}

void XmlElement::RemoveElements(std::string name) {
  std::erase_if(m_elements, [&](const XmlElement& child) { return child.m_name == name; });
}

void XmlElement::Clear() {
  m_name.clear();
  m_text.clear();
  m_attributes.clear();
  m_elements.clear();
}

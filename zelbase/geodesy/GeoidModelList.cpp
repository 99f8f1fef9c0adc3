#include "zelbase/geodesy/GeoidModelList.h"

#include <memory>
#include <utility>

GeoidModelList::~GeoidModelList() { RemoveAll(); }

GeoidModelList& GeoidModelList::GetGeoidModelList() {
  return zelbase::detail::OneRegistry<GeoidModelList>([](GeoidModelList& list) { list.RemoveAll(); });
}

void GeoidModelList::RegisterGeoidModel(std::string name, unsigned short type, GeoidModelICreator* creator) {
  // Kept: a known type does not stop the name, and the other way round; the maps may disagree.
  m_types.Register(type, creator);
  std::shared_ptr<GeoidModelICreator> named = m_types.Held(creator);
  // Kept: without a type it is not owned.
  if (named == nullptr) named.reset(creator, [](GeoidModelICreator*) {});
  m_names.Register(std::move(name), std::move(named));
}

GeoidModel* GeoidModelList::Create(const unsigned short& type) { return m_types.Create(type); }

GeoidModel* GeoidModelList::Create(const std::string& name) { return m_names.Create(name); }

void GeoidModelList::GetGeoidModelNames(std::vector<std::string>& names) { m_names.Keys(names); }

// The names first, so that the creators go in the order of their types. A creator's destructor may register others.
void GeoidModelList::RemoveAll() {
  do {
    m_names.Clear();
    m_types.Clear();
  } while (!m_names.IsEmpty());
}

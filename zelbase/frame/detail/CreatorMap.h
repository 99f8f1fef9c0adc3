// What a registry is made of: creators by key, the first of a key wins, each destroyed once. Internal to the library; the
// registries built on it stand in geometry/, data/, actions/ and geodesy/.
#pragma once

#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace zelbase::detail {

// Creator has an operation Create(), without arguments, and a virtual destructor; objects of another kind are only found.
// Copies share the creators; the last map that holds one destroys it. A creator leaves the map before it is destroyed, since
// its destructor may call back; it is held while it works, since it may take its own key out.
//
// One creator may stand under several keys. To find that out, Register looks at the one registered before, which is the same for
// the thousands of keys of one file, and then through the map: a registry has tens of different ones.
template <class Key, class Creator>
class CreatorMap {
 public:
  using Pointer = std::shared_ptr<Creator>;

  CreatorMap() = default;
  CreatorMap(const CreatorMap&) = default;
  CreatorMap& operator=(const CreatorMap& other) {
    // The old creators go last, with the copy: their destructors may call back.
    CreatorMap copy(other);
    m_creators.swap(copy.m_creators);
    return *this;
  }
  ~CreatorMap() { Clear(); }

  // Owns the creator from now on, also without memory (std::bad_alloc), unless it is null or the key is taken.
  void Register(const Key& key, Creator* creator) {
    if (creator == nullptr) return;
    // Kept: no replacement, and a refused creator stays its caller's.
    if (m_creators.contains(key)) return;
    Pointer held = m_latest.lock();
    if (held.get() != creator) held = Held(creator);
    if (held == nullptr) held.reset(creator);
    m_latest = held;
    m_creators.emplace(key, std::move(held));
  }

  // The same for a creator whose ownership is settled elsewhere.
  void Register(Key key, Pointer creator) {
    if (creator != nullptr) m_creators.try_emplace(std::move(key), std::move(creator));
  }

  // False for an unknown key.
  bool UnRegister(const Key& key) { return !m_creators.extract(key).empty(); }

  bool IsEmpty() const { return m_creators.empty(); }

  // Empties `keys`, fills it in the order of the map and gives the number.
  int Keys(std::vector<Key>& keys) const {
    keys.clear();
    keys.reserve(m_creators.size());
    for (const auto& [key, creator] : m_creators) keys.push_back(key);
    return static_cast<int>(keys.size());
  }

  // The creator of `key`, held as long as the result; null for an unknown key.
  Pointer Find(const Key& key) const {
    const auto found = m_creators.find(key);
    return found == m_creators.end() ? nullptr : found->second;
  }

  // What the creator of `key` makes; null for an unknown key.
  auto Create(const Key& key) const {
    const Pointer creator = Find(key);
    return creator == nullptr ? nullptr : creator->Create();
  }

  // In ascending order of the keys; what a creator's destructor registers meanwhile goes, too.
  void Clear() {
    while (!m_creators.empty()) m_creators.extract(m_creators.begin());
  }

  // The ownership of a creator that already has a key; null when it has none.
  Pointer Held(const Creator* creator) const {
    for (const auto& [key, held] : m_creators) {
      if (held.get() == creator) return held;
    }
    return nullptr;
  }

 private:
  std::map<Key, Pointer> m_creators;
  std::weak_ptr<Creator> m_latest;
};

// The one Registry of the process, made at first use. It stays, so that destructors that run later find it; only what it
// holds goes at exit, by `empty`. To be called from one place of the library's own sources.
template <class Registry>
Registry& OneRegistry(void (*empty)(Registry&)) {
  static Registry* const registry = new Registry;
  struct Emptier {
    void (*empty)(Registry&);
    ~Emptier() { empty(*registry); }
  };
  static const Emptier emptier{empty};
  return *registry;
}

}  // namespace zelbase::detail

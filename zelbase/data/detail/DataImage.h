// What an entry of an archive holds of each kind of data reference, byte for byte: the layout that these objects had in the memory
// of a 32-bit process, with the length of a string where its pointer was. Internal to the library. Neighbour: EntryArchive.h.
#pragma once

#include <type_traits>

#include "zelbase/data/CCompOffset.h"
#include "zelbase/data/CDataInfoEx.h"

namespace zelbase::detail {

// Image is one of the four classes of EntryArchive.h, and the object is constant when it is written.
struct DataImage {
  // 12 bytes. The key travels as it is, stale or not.
  template <class Image, class Id>
  requires std::is_same_v<std::remove_const_t<Id>, CDataId>
  static void Describe(Image& image, Id& id) {
    image.Value(id.m_dataType);
    image.Value(id.m_groupId);
    image.Value(id.m_deviceNum);
    image.Value(id.m_vesselId);
    image.Text(id.m_key);
  }

  // 16 bytes.
  template <class Image, class Info>
  requires std::is_same_v<std::remove_const_t<Info>, CDataInfo>
  static void Describe(Image& image, Info& info) {
    Describe(image, info.m_dataId);
    image.Value(info.m_elemId);
    image.Value(info.m_arrayIndex);
  }

  // 60 bytes.
  template <class Image, class Info>
  requires std::is_same_v<std::remove_const_t<Info>, CDataInfoEx>
  static void Describe(Image& image, Info& info) {
    using Base = std::conditional_t<std::is_const_v<Info>, const CDataInfo, CDataInfo>;
    auto& attribs = info.m_textAttribs;
    image.Skip(4);
    Describe(image, static_cast<Base&>(info));
    image.Value(info.m_separator);
    image.Skip(3);
    image.Text(info.m_userDescription);
    image.Value(info.m_defaultAttribs);
    image.Skip(3);
    image.Value(attribs.attrib1);
    image.Value(attribs.attrib2);
    image.Text(attribs.attribText);
    image.Value(attribs.attribFlag1);
    image.Value(attribs.attribFlag2);
    image.Skip(2);
    image.Value(attribs.attrib3);
    image.Value(info.m_defaultFormat);
    image.Skip(3);
    image.Value(info.m_decimals);
  }

  // 64 bytes.
  template <class Image, class Offset>
  requires std::is_same_v<std::remove_const_t<Offset>, CCompOffset>
  static void Describe(Image& image, Offset& offset) {
    image.Skip(4);
    image.Value(offset.m_offTrackSelection);
    image.Value(offset.m_offsetType);
    image.Value(offset.m_offsetVesselId);
    image.Text(offset.m_offsetName);
    Describe(image, offset.m_offsetDataId);
    image.Skip(8);
    image.Value(offset.m_x);
    image.Value(offset.m_y);
    image.Value(offset.m_z);
  }
};

}  // namespace zelbase::detail

// SPDX-License-Identifier: Apache-2.0
#include "store/bag_access.h"
#include "store/copying.h"
#include "store/create_property.h"

#include <zantrel/io/mfile.h>

#include <bit>
#include <limits>
#include <stdexcept>

// The binary form: little-endian numbers, texts and bytes behind their length, a bag as the number of its
// entries and for each its name, type name, deleted mark and value. docs/binary_form.md tells it in full.

using Sequence = IndexedProperties<PersistentProperties>;

namespace {

/// Bags within bags: deeper ones are no form that this library writes from anything it reads.
constexpr int DepthLimit = 1024;

void Put(bool value, MFile& file, int) { file.WriteUnsigned8(value ? 1 : 0); }
void Put(std::int32_t value, MFile& file, int) { file.WriteUnsigned32(static_cast<std::uint32_t>(value)); }
void Put(double value, MFile& file, int) { file.WriteUnsigned64(std::bit_cast<std::uint64_t>(value)); }

void Put(std::wstring_view text, MFile& file, int = 0) {
    file.WriteUnsigned64(text.size());
    for (wchar_t const unit : text) {
        // Four bytes on every platform, whatever wchar_t takes here.
        file.WriteUnsigned32(static_cast<std::uint32_t>(unit));
    }
}

void Put(KelAM::FileContent const& content, MFile& file, int) {
    Put(content.m_name, file);
    file.WriteUnsigned64(content.m_data.size());
    file.Write(content.m_data.data(), content.m_data.size());
}

void Put(PersistentProperties const& bag, MFile& file, int depth);

void Put(Sequence const& sequence, MFile& file, int depth) {
    file.WriteUnsigned64(sequence.GetNumProperties());
    for (unsigned long long i = 0; i < sequence.GetNumProperties(); ++i) {
        Put(sequence.GetProperty(static_cast<std::int32_t>(i)), file, depth + 1);
    }
}

// The type name of each property comes from the property itself, and only what CreateProperty makes of it can
// be read back; so a class of a host's own is refused while writing, not when it is too late.
void Put(PersistentProperties const& bag, MFile& file, int depth) {
    if (depth > DepthLimit) {
        throw std::runtime_error("bags nested too deeply for the binary form");
    }
    file.WriteUnsigned64(bag.GetNumProperties());
    for (auto const& [name, property] : bag) {
        Put(name, file);
        Put(property->GetType(), file);
        file.WriteUnsigned8(property->IsDeleted() ? 1 : 0);
        bool const known = Zantrel::VisitProperty(
            *property, [&](auto const& typed) { Put(typed.m_value, file, depth + 1); });
        if (!known) {
            throw std::runtime_error("a property of a class of the host's own has no binary form in a bag");
        }
    }
}

void Put(KelAM::ExternalProperties const& bag, MFile& file, int depth) {
    Put(bag.m_objectKind, file, depth);
    Put(bag.m_id.FormatGuid(false, false), file);
    Put(static_cast<PersistentProperties const&>(bag), file, depth);
}

/// A length or count, each unit of which takes at least `bytesEach`: what the bytes can't hold is refused
/// before any memory is asked for.
std::size_t TakeLength(MFile& file, std::size_t bytesEach) {
    std::uint64_t const length = file.ReadUnsigned64();
    if (length > file.GetRemaining() / bytesEach) {
        throw std::runtime_error("the binary form says more than it holds");
    }
    return static_cast<std::size_t>(length);
}

void Take(bool& value, MFile& file, int) { value = file.ReadUnsigned8() != 0; }
void Take(std::int32_t& value, MFile& file, int) { value = static_cast<std::int32_t>(file.ReadUnsigned32()); }
void Take(double& value, MFile& file, int) { value = std::bit_cast<double>(file.ReadUnsigned64()); }

// Into a value of its own, and so are the others below: a form that breaks off leaves its target as it was.
void Take(std::wstring& text, MFile& file, int = 0) {
    std::wstring read(TakeLength(file, 4), L'\0');
    for (wchar_t& unit : read) {
        std::uint32_t const value = file.ReadUnsigned32();
        if (value > static_cast<std::uint32_t>(std::numeric_limits<wchar_t>::max())) {
            throw std::runtime_error("the binary form holds a character that this platform has not");
        }
        unit = static_cast<wchar_t>(value);
    }
    text.swap(read);
}

void Take(KelAM::FileContent& content, MFile& file, int) {
    KelAM::FileContent read;
    Take(read.m_name, file);
    read.m_data.resize(TakeLength(file, 1));
    file.Read(read.m_data.data(), read.m_data.size());
    content = std::move(read);
}

void Take(PersistentProperties& bag, MFile& file, int depth);

void Take(Sequence& sequence, MFile& file, int depth) {
    Sequence read;
    // Eight bytes a bag at least: the number of its entries.
    for (std::uint64_t left = TakeLength(file, 8); left != 0; --left) {
        Take(read.AddProperty(), file, depth + 1);
    }
    Zantrel::BagInside::Swap(sequence, read);
}

std::unique_ptr<IPersistentProperty> TakeProperty(MFile& file, int depth) {
    std::wstring type;
    Take(type, file);
    bool const deleted = file.ReadUnsigned8() != 0;
    auto property = Zantrel::CreateProperty(type, Zantrel::AllPropertyClasses());
    if (property == nullptr) {
        throw std::runtime_error("the binary form holds a property of an unknown type");
    }
    Zantrel::VisitProperty(*property, [&](auto& typed) { Take(typed.m_value, file, depth + 1); });
    property->SetDeleted(deleted);
    return property;
}

// Read into bags of their own first, so that bytes that turn out to be no such form change nothing.
void Take(PersistentProperties& bag, MFile& file, int depth) {
    if (depth > DepthLimit) {
        throw std::runtime_error("bags nested too deeply in the binary form");
    }
    PersistentProperties read;
    // 17 bytes an entry at least: two lengths of eight, of the name and of its type, and the mark.
    for (std::uint64_t left = TakeLength(file, 17); left != 0; --left) {
        std::wstring name;
        Take(name, file);
        read.AddProperty(name, TakeProperty(file, depth).release());
    }
    Zantrel::BagAccess::Swap(bag, read);
}

void Take(KelAM::ExternalProperties& bag, MFile& file, int depth) {
    KelAM::ExternalProperties read;
    std::wstring id;
    Take(read.m_objectKind, file, depth);
    Take(id, file);
    Take(static_cast<PersistentProperties&>(read), file, depth);
    read.m_id = KelAM::ExternalPropertyID(id);
    Zantrel::TakeOver(bag, read);
}

} // namespace

template <class T> void WriteValueOfProperty(T const& value, MFile& file) { Put(value, file, 0); }
template <class T> void ReadValueOfProperty(T& value, MFile& file) { Take(value, file, 0); }

void Sequence::Write(MFile& file) const { Put(*this, file, 0); }
void Sequence::Read(MFile& file) { Take(*this, file, 0); }

template ZANTREL_EXPORT void WriteValueOfProperty(std::int32_t const&, MFile&);
template ZANTREL_EXPORT void ReadValueOfProperty(std::int32_t&, MFile&);
template ZANTREL_EXPORT void WriteValueOfProperty(double const&, MFile&);
template ZANTREL_EXPORT void ReadValueOfProperty(double&, MFile&);
template ZANTREL_EXPORT void WriteValueOfProperty(bool const&, MFile&);
template ZANTREL_EXPORT void ReadValueOfProperty(bool&, MFile&);
template ZANTREL_EXPORT void WriteValueOfProperty(std::wstring const&, MFile&);
template ZANTREL_EXPORT void ReadValueOfProperty(std::wstring&, MFile&);
template ZANTREL_EXPORT void WriteValueOfProperty(KelAM::FileContent const&, MFile&);
template ZANTREL_EXPORT void ReadValueOfProperty(KelAM::FileContent&, MFile&);
template ZANTREL_EXPORT void WriteValueOfProperty(PersistentProperties const&, MFile&);
template ZANTREL_EXPORT void ReadValueOfProperty(PersistentProperties&, MFile&);
template ZANTREL_EXPORT void WriteValueOfProperty(KelAM::SubProperties const&, MFile&);
template ZANTREL_EXPORT void ReadValueOfProperty(KelAM::SubProperties&, MFile&);
template ZANTREL_EXPORT void WriteValueOfProperty(KelAM::ExternalProperties const&, MFile&);
template ZANTREL_EXPORT void ReadValueOfProperty(KelAM::ExternalProperties&, MFile&);

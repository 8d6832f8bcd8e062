// SPDX-License-Identifier: Apache-2.0
#include <zantrel/sax/sax_persist.h>

// Here and not in the header, so that each class has one place for its type information: a host's handler
// must be the same class to the library.
ISAXReference::ISAXReference() = default;
ISAXReference::ISAXReference(ISAXReference const&) = default;
ISAXReference& ISAXReference::operator=(ISAXReference const&) = default;
ISAXReference::~ISAXReference() = default;

ISAXPersistBase::~ISAXPersistBase() = default;
ISAXPersist::~ISAXPersist() = default;
ISAXPersistHelper::~ISAXPersistHelper() = default;

bool ISAXPersistBase::HandleTextPiece(std::string const&, std::string_view) { return false; }

void ISAXPersistHelper::SetDefaults() {}

bool ISAXPersistHelper::HandleTag(std::string const&, KelSAX::ISAXReader&) { return false; }

void ISAXPersistHelper::HandleEndTag(std::string_view) {}

void ISAXPersistHelper::ResolveReferences(KelSAX::ISAXReader&) {}

void ISAXPersistHelper::InitAfterLoading() {}

bool ISAXPersistHelper::Write(KelSAX::ISAXWriter&) const { return true; }

ISAXReference* ISAXPersistHelper::GetObjectReference() { return this; }

void ISAXPersistHelper::SetObjectId(unsigned int, KelSAX::SaxIDType) {}

void ISAXPersistHelper::SetObjectId(unsigned int) {}

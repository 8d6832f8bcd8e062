// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

#include <string>
#include <string_view>

#include <zantrel/macros_away.h>

namespace KelSAX {

class ISAXReader;
class ISAXWriter;

/// How an object identifier was given. No handler of the library uses identifiers.
enum class SaxIDType { None, Local, Global };

} // namespace KelSAX

/// What another object may refer to. Carries nothing.
class ZANTREL_EXPORT ISAXReference {
public:
    ISAXReference();
    ISAXReference(ISAXReference const& other);
    ISAXReference& operator=(ISAXReference const& other);
    virtual ~ISAXReference();
};

/// What a driver calls on a handler. A handler belongs to one thread at a time.
///
/// While a document is read: SetDefaults, then HandleTag and HandleEndTag for each element in document order,
/// at last ResolveReferences and InitAfterLoading. While one is written: Write, between the root's start and
/// end tag.
class ZANTREL_EXPORT ISAXPersistBase {
public:
    virtual ~ISAXPersistBase();

    /// Called once on the handler that the read was started with, before the first tag.
    virtual void SetDefaults() = 0;

    /// An element begins. `tag` is its name as the document has it, with any prefix, and stays good until the
    /// element's end. The element's attributes and text are readable through `reader` until this function
    /// returns. True says that the element was taken. False changes nothing in the course of the read: the
    /// children come all the same, to the handler pushed here or, without one, to this handler.
    virtual bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) = 0;

    /// An element that this handler got through HandleTag has ended.
    /// The handlers that the element pushed are still alive, and end after this call.
    virtual void HandleEndTag(std::string_view tag) = 0;

    /// Called once on the handler that the read was started with, after the end of a well-formed document.
    /// `reader` has no element to tell of any more: what it is asked for isn't there.
    virtual void ResolveReferences(KelSAX::ISAXReader& reader) = 0;

    /// Follows ResolveReferences.
    /// The last call of a read. What any of these functions throws ends the read and reaches its caller.
    virtual void InitAfterLoading() = 0;

    /// Writes the content of the element that is open. False makes the whole write fail.
    /// An element that is opened here and left open does so, too, and so does a call on `writer` that
    /// failed, whatever the answer. What it throws reaches the caller of the write.
    virtual bool Write(KelSAX::ISAXWriter& writer) const = 0;

    /// A piece of the text of an element that HandleTag will be called with; only a text longer than
    /// 64 KiB comes so, from its beginning on and before anything else is known of the element. True takes
    /// the piece: the reader forgets it, and HandleTag finds the text that follows. False, as the inherited
    /// one gives, leaves it to HandleTag; then the same text comes again, grown. White space before a first
    /// child, which HandleTag wouldn't find, may be among it. Not every long text comes in pieces.
    virtual bool HandleTextPiece(std::string const& tag, std::string_view piece);

protected:
    ISAXPersistBase() = default;
    ISAXPersistBase(ISAXPersistBase const&) = default;
    ISAXPersistBase& operator=(ISAXPersistBase const&) = default;
};

/// A handler as readers and drivers know it. Owned by whoever made it, unless it is pushed
/// (ISAXReader::PushHandler).
class ZANTREL_EXPORT ISAXPersist : public ISAXPersistBase, public virtual ISAXReference {
public:
    ~ISAXPersist() override;

protected:
    ISAXPersist() = default;
    ISAXPersist(ISAXPersist const&) = default;
    ISAXPersist& operator=(ISAXPersist const&) = default;
};

/// The base of every handler: a read handler overrides HandleTag, a write handler overrides Write, and both
/// inherit harmless defaults for the rest.
class ZANTREL_EXPORT ISAXPersistHelper : public ISAXPersist {
public:
    ISAXPersistHelper() = default;
    ISAXPersistHelper(ISAXPersistHelper const&) = default;
    ISAXPersistHelper& operator=(ISAXPersistHelper const&) = default;
    ~ISAXPersistHelper() override;

    void SetDefaults() override;
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override; ///< takes nothing: false
    void HandleEndTag(std::string_view tag) override;
    void ResolveReferences(KelSAX::ISAXReader& reader) override;
    void InitAfterLoading() override;
    bool Write(KelSAX::ISAXWriter& writer) const override; ///< writes nothing: true

    virtual ISAXReference* GetObjectReference(); ///< this handler
    /// Nothing in the library calls these; a host's own objects may. The inherited ones do nothing.
    virtual void SetObjectId(unsigned int id, KelSAX::SaxIDType type);
    virtual void SetObjectId(unsigned int id);
};

#include <zantrel/macros_back.h>

#pragma once

#include <memory>
#include <string>

#include "host/graph/Attributes.h"
#include "host/graph/InputExpression.h"
#include "host/graph/InputState.h"
#include "host/value/Parameter.h"

namespace ombrelune {

class Operator;
class Output;
class Request;

/// Time argument of Input::SetSource that stands for the default value.
inline constexpr double kDefaultTime = -2e9;

/// One input of an operator: identifier, attributes, and where its value comes from: an expression, another
/// operator's output, a value, or the default that the attributes tell, the first that is there. Made by
/// Operator::AddInputTagList.
///
/// All that can change may be set and asked for on any thread; a render that began before sees what was there
/// then (see Snapshot).
class Input {
public:
    Input(Operator* owner, int index, FuID name, FuID id, TagList attributes);
    virtual ~Input() = default;
    Input(Input const&) = delete;
    Input& operator=(Input const&) = delete;

    Operator* Owner() const { return owner_; }
    int Index() const { return index_; }
    FuID Id() const { return id_; }
    /// The label it was declared with; Label() is what the interface shows now.
    std::string const& Name() const { return name_.Text(); }
    std::string Label() const;
    std::string const& Page() const { return page_; }
    /// Label of the innermost control nest, empty when there is none.
    std::string const& Nest() const { return nest_; }

    TagList Attributes() const;
    virtual void SetAttrsTagList(TagList const& tags);
    virtual void ShowControls(int all) { SetAttrsTagList({{Attr_ControlVisible, all != 0}}); }
    virtual void HideControls(int all) { SetAttrsTagList({{Attr_ControlVisible, all == 0}}); }
    bool IsVisible() const { return State().isVisible; }

    FuID DataType() const { return dataType_; }
    /// Inputs of priority -1 and below arrive after CheckRequest.
    int Priority() const { return State().priority; }
    bool IsRequired() const { return State().isRequired; }
    bool IsImage() const { return dataType_ == CLSID_DataType_Image || dataType_ == CLSID_DataType_Mask; }
    /// Number of a main input, counted from 1; 0 for all others.
    int MainNumber() const { return mainNumber_; }

    /// Value of a slot while a request is under way; null when absent. Belongs to the request.
    Parameter* GetValue(Request* request, int slot) const;

    /// Sets the value that holds at all times and tells the operator (Operator::NotifyChanged). The time
    /// kDefaultTime sets the default instead. Takes a reference of its own. Within a notification, or while
    /// the thread works for an operator, the telling waits until that is over.
    virtual void SetSource(Parameter* value, double time, TagList const* tags);
    /// The same in silence, for documents that are being read.
    void SetValueQuietly(Ref<Parameter> value);
    void ConnectTo(Output* source);
    /// Null takes an expression away.
    void SetExpression(std::shared_ptr<InputExpression const> expression);
    Output* Source() const { return State().source; }
    std::shared_ptr<InputExpression const> Expression() const { return State().expression; }
    bool HasValue() const;
    /// The value that was set, else the default; null for an image, mask or class without one.
    Ref<Parameter> Value() const { return State().value; }
    Ref<Parameter> Default() const;
    /// What it has now.
    InputState State() const;

private:
    friend class FusionDoc;
    friend class Operator;

    template <class Change> void Edit(Change const& change);
    void ReadAttributes();

    Operator* owner_;
    int index_;
    FuID name_, id_;
    FuID dataType_;
    int mainNumber_;
    std::string page_, nest_;
    // Under the lock of edits, see Operator::EditLock.
    TagList attributes_;
    Ref<Parameter> default_;
    bool hasValue_ = false;
    InputState state_;
};

} // namespace ombrelune

#pragma once

#include <memory>
#include <string>

#include "host/graph/Attributes.h"
#include "host/graph/InputExpression.h"
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
    std::string Label() const { return attributes_.GetText(Attr_ControlName, name_.Text()); }
    std::string const& Page() const { return page_; }
    /// Label of the innermost control nest, empty when there is none.
    std::string const& Nest() const { return nest_; }

    TagList const& Attributes() const { return attributes_; }
    virtual void SetAttrsTagList(TagList const& tags);
    virtual void ShowControls(int all) { SetAttrsTagList({{Attr_ControlVisible, all != 0}}); }
    virtual void HideControls(int all) { SetAttrsTagList({{Attr_ControlVisible, all == 0}}); }
    bool IsVisible() const { return attributes_.GetBool(Attr_ControlVisible, true); }

    FuID DataType() const { return attributes_.GetId(Attr_DataType); }
    /// Inputs of priority -1 and below arrive after CheckRequest.
    int Priority() const { return priority_; }
    bool IsRequired() const { return attributes_.GetBool(Attr_Required, IsImage()); }
    bool IsImage() const;
    /// Number of a main input, counted from 1; 0 for all others.
    int MainNumber() const { return static_cast<int>(attributes_.GetInt(Attr_MainNumber)); }

    /// Value of a slot while a request is under way; null when absent. Belongs to the request.
    Parameter* GetValue(Request* request, int slot) const;

    /// Sets the value that holds at all times and tells the operator (Operator::NotifyChanged). The time
    /// kDefaultTime sets the default instead. Takes a reference of its own.
    virtual void SetSource(Parameter* value, double time, TagList const* tags);
    /// The same in silence, for documents that are being read.
    void SetValueQuietly(Ref<Parameter> value) { value_ = std::move(value); }
    void ConnectTo(Output* source) { source_ = source; }
    Output* Source() const { return source_; }
    /// Null takes an expression away.
    void SetExpression(std::unique_ptr<InputExpression> expression) { expression_ = std::move(expression); }
    InputExpression const* Expression() const { return expression_.get(); }
    /// A number that was computed, brought into the hard range of this input; any other value as it is.
    Ref<Parameter> Limited(Ref<Parameter> value) const;
    bool HasValue() const { return static_cast<bool>(value_); }
    /// The value that was set, else the default; null for an image, mask or class without one.
    Ref<Parameter> Value() const { return value_ ? value_ : default_; }
    Ref<Parameter> Default() const { return default_; }

private:
    friend class Operator;

    Operator* owner_;
    int index_;
    FuID name_, id_;
    TagList attributes_;
    int priority_;
    std::string page_, nest_;
    Ref<Parameter> default_, value_;
    Output* source_ = nullptr;
    std::unique_ptr<InputExpression> expression_;
};

} // namespace ombrelune

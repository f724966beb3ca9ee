#pragma once

#include "host/graph/Attributes.h"
#include "host/value/Parameter.h"

namespace ombrelune {

class Operator;
class Request;

/// One output of an operator. Made by Operator::AddOutputTagList.
class Output {
public:
    Output(Operator* owner, int index, FuID name, FuID id, TagList attributes)
        : owner_(owner), index_(index), name_(name), id_(id), attributes_(std::move(attributes))
    {}

    Operator* Owner() const { return owner_; }
    int Index() const { return index_; }
    FuID Id() const { return id_; }
    std::string const& Name() const { return name_.Text(); }
    TagList const& Attributes() const { return attributes_; }
    FuID DataType() const { return attributes_.GetId(Attr_DataType); }
    int MainNumber() const { return static_cast<int>(attributes_.GetInt(Attr_MainNumber)); }

    /// Hands a result over; the host owns the caller's reference from then on. Null means no result.
    void Set(Request* request, Parameter* value, TagList* tags);

private:
    Operator* owner_;
    int index_;
    FuID name_, id_;
    TagList attributes_;
};

} // namespace ombrelune

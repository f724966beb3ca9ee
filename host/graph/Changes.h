#pragma once

#include "host/value/Parameter.h"

namespace ombrelune {

class Input;

/// Tells an operator that an input of its own was changed (Operator::NotifyChanged). A change that arises
/// while this thread tells of another, or works for an operator, is told when that is over. Changes that call
/// each other up without end are cut; the document gets a problem that names the inputs.
void TellOfChange(Input& input, Ref<Parameter> value, double time, TagList tags);

} // namespace ombrelune

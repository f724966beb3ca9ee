// Any bytes as a flow: reading, writing in the canonical layout, values of splines and expressions.

#include "fuzz/Require.h"
#include "host/flow/FlowReader.h"
#include "host/flow/Writer.h"
#include "host/render/Renderer.h"

using namespace ombrelune;

namespace {

void CheckLayout(std::string_view text)
{
    Parsed const parsed = ParseScript(text, "flow");
    for (Problem const& problem : parsed.problems) Require(!problem.text.empty(), "a problem has a text");
    Require(!parsed.value.IsNil() || !parsed.problems.empty() || text.find("nil") != text.npos,
            "there is a value or a problem");
    if (!parsed.problems.empty()) return;
    std::string const written = WriteScript(parsed);
    Parsed const again = ParseScript(written, "flow");
    Require(again.problems.empty(), "what was written can be read");
    Require(WriteScript(again) == written, "what was written is written the same way again");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string_view const text(reinterpret_cast<char const*>(data), size);
    CheckLayout(text);
    FlowReading const reading = ReadFlowText(text, "flow");
    Require(!reading.document == !reading.problems.empty(), "there is a document or a problem");
    if (!reading.document) return 0;
    Renderer renderer(*reading.document, {});
    for (auto const& op : reading.document->Operators()) {
        // The values only: a Loader would open whatever file the bytes name.
        Output* const value = op->FindOutput("Value");
        if (value)
            for (double time : {-1.5, 7.0}) renderer.Evaluate(*value, time);
    }
    return 0;
}

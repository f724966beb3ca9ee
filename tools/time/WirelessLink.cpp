// Wireless Link: brings in a picture from anywhere in the flow, through an input that needs no connection
// drawn.

#include "framework/Registration.h"
#include "tools/time/KEffectLinks.h"

namespace ombrelune {

class KEffectWirelessLink : public KEffectLinks {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "WiL", "Wireless Link"); }

    bool GetFlag(KProcessFlag flag) override
    {
        return flag == KPF_OptionalImage || KEffectLinks::GetFlag(flag);
    }
};

OMBRELUNE_TOOL(BF_WirelessLink, BF_ThreadedOperator, KEffectWirelessLink);

} // namespace ombrelune

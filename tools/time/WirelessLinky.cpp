// Wireless Linky: a Wireless Link that stands at the beginning of a branch, as a source.

#include "framework/Registration.h"
#include "tools/time/KEffectLinks.h"

namespace ombrelune {

class KEffectWirelessLinky : public KEffectLinks {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "WiLy", "Wireless Linky"); }

    bool GetFlag(KProcessFlag flag) override { return flag == KPF_Source || KEffectLinks::GetFlag(flag); }
};

OMBRELUNE_TOOL(BF_WirelessLinky, BF_SourceOperator, KEffectWirelessLinky);

} // namespace ombrelune

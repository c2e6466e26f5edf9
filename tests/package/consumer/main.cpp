// A host's first steps: it sees that the module misses a host, and uses the node classes and the plain function.
#include <host/Installation.h>
#include <presenter/CAutoQdDeConfigFacade.h>
#include <presenter/RefreshAutoConfig.h>
#include <tree/ConfigNode.h>

#include <cstdio>

int main()
{
    try {
        CString message;
        RefreshAutoConfig(message, QStringLiteral("x.xml"));
        std::puts("a module without a host must refuse to work");
        return 1;
    } catch (const host::NoHostError&) {
    }
    ConfigNode rule;
    rule.AddCondition(ConditionNode(QStringLiteral("A"), true, QStringLiteral("="), {}, {}, QStringLiteral("1"), {}, {}));
    return rule.GetConditionString() == QStringLiteral("A=1;") ? 0 : 1;
}

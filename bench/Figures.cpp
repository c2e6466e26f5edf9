#include "bench/Figures.h"

#include "bench/Measure.h"
#include "platform/Process.h"
#include "store/CXmlQdDeConfig.h"

#include <QtCore/QProcess>

#include <libxml/parser.h>
#include <pugixml.hpp>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int LookUps = 1'000'000;
constexpr double Megabyte = 1024.0 * 1024.0;

void LoadRaw(const Input& input)
{
    pugi::xml_document document;
    if (!document.load_file(input.nativePath.constData()))
        throw std::runtime_error("the peer cannot load the file");
    Keep(&document);
}

void LoadAndSaveRaw(const Input& input)
{
    pugi::xml_document document;
    document.load_file(input.nativePath.constData());
    const QByteArray copy = input.nativePath + ".peer";
    if (!document.save_file(copy.constData())) throw std::runtime_error("the peer cannot save the file");
}

void OpenStore(const Input& input)
{
    const CXmlQdDeConfig store(input.path, input.spec);
    Keep(&store);
}

/// The path of each rule of the specialty.
std::vector<CPath> PathsOfRules(const Input& input)
{
    Spec spec;
    const xml::Document document = xml::Document::Create();
    document.Load(input.path);
    spec.SetSpecName(input.spec);
    spec.ReadData(document.FirstChild().SelectSingleNode(input.spec));
    std::vector<CPath> paths;
    for (const LMember* big : spec.GetAllLMember())
        for (const SMember* small : big->GetAllSMember())
            for (const ConfigNode* rule : small->GetAllConfig()) {
                CPath path{};
                path.specId = spec.GetId();
                path.lMemberId = big->GetId();
                path.sMemberId = small->GetId();
                path.configId = rule->GetId();
                paths.push_back(path);
            }
    return paths;
}

/// The lists of a store's tree, copied out, for a look-up by bare loops. They hold the store's own nodes:
/// others would lie elsewhere in memory, and where they lie is most of what a look-up costs.
struct BareSmall
{
    const SMember* node;
    std::vector<ConfigNode*> rules;
};
struct BareBig
{
    const LMember* node;
    std::vector<BareSmall> smalls;
};

std::vector<BareBig> Bare(IQdDeConfigData& store, const std::vector<CPath>& paths)
{
    std::vector<BareBig> bare;
    for (const CPath& path : paths) {
        const auto* small = static_cast<const SMember*>(store.GetConfig(path)->GetParent());
        const auto* big = static_cast<const LMember*>(small->GetParent());
        if (bare.empty() || bare.back().node != big) bare.push_back({big, {}});
        std::vector<BareSmall>& smalls = bare.back().smalls;
        if (smalls.empty() || smalls.back().node != small) smalls.push_back({small, small->GetAllConfig()});
    }
    return bare;
}

const ConfigNode* FindBare(const std::vector<BareBig>& bigs, const CPath& path)
{
    for (const BareBig& big : bigs) {
        if (big.node->GetId() != path.lMemberId) continue;
        for (const BareSmall& small : big.smalls) {
            if (small.node->GetId() != path.sMemberId) continue;
            for (const ConfigNode* rule : small.rules)
                if (rule->GetId() == path.configId) return rule;
        }
    }
    return nullptr;
}

void LoadDom(const Input& input)
{
    xmlDocPtr document = xmlReadFile(input.nativePath.constData(), nullptr, XML_PARSE_HUGE | XML_PARSE_NONET);
    Keep(document);
    xmlFreeDoc(document);
}

/// What this program prints when it is started anew for one piece of work.
double AskChild(const QString& program, const char* work, const Input& input)
{
    QProcess child;
    child.start(program,
                {u"--child"_s, CString::fromLatin1(work), CString::fromUtf8(input.nativePath), input.spec});
    child.waitForFinished(-1);
    const double answer = child.readAllStandardOutput().trimmed().toDouble();
    if (child.exitCode() != 0 || answer <= 0) throw std::runtime_error("a child process did not answer");
    return answer;
}

double Median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

bool Open(const char* name, const Input& input, int rounds, double bar, double& ratio)
{
    const Timed timed = Alternate(
        rounds, [&] { OpenStore(input); }, [&] { LoadRaw(input); });
    ratio = timed.Ratio();
    return Report({name, "pugixml_load", bar}, timed.oursMs, timed.peerMs, ratio);
}

bool OpenVersusDom(const Input& input, int rounds, const QString& program)
{
    QList<double> ours;
    QList<double> peer;
    for (int round = 0; round < rounds; ++round) {
        ours.append(AskChild(program, "time-store", input));
        peer.append(AskChild(program, "time-dom", input));
    }
    return Report({"open_vs_dom", "libxml2_dom_load", 0.25}, Median(ours), Median(peer),
                  Median(ours) / Median(peer));
}

bool Save(const char* name, const Input& input, int rounds, double bar, double& ratio)
{
    CXmlQdDeConfig store(input.path, input.spec);
    const std::vector<CPath> paths = PathsOfRules(input);
    CPath edited = paths[paths.size() / 2];
    edited.conditionId = 1;
    int round = 0;
    const Timed timed = Alternate(
        rounds,
        [&] {
            const CString value = u"DN%1"_s.arg(++round);
            store.ResetCondition(edited, {u"公称直径"_s, true, u"＝"_s, {}, {}, value, {}, {}});
            store.Save();
        },
        [&] { LoadAndSaveRaw(input); });
    ratio = timed.Ratio();
    return Report({name, "pugixml_load_save", bar}, timed.oursMs, timed.peerMs, ratio);
}

bool Resolve(const Input& input, int rounds)
{
    const std::vector<CPath> paths = PathsOfRules(input);
    CXmlQdDeConfig store(input.path, input.spec);
    IQdDeConfigData& data = store;
    const std::vector<BareBig> bare = Bare(data, paths);
    const auto lookUp = [&](auto find) {
        for (int i = 0; i < LookUps; ++i)
            Keep(find(paths[static_cast<std::size_t>(i) * 7919U % paths.size()]));
    };
    const Timed timed = Alternate(
        rounds, [&] { lookUp([&](const CPath& path) { return data.GetConfig(path); }); },
        [&] { lookUp([&](const CPath& path) { return FindBare(bare, path); }); });
    return Report({"resolve", "bare_loop", 1.5}, timed.oursMs, timed.peerMs, timed.Ratio());
}

bool OpenMemory(const Input& input, const QString& program)
{
    const double ours = AskChild(program, "peak-store", input) / Megabyte;
    const double peer = AskChild(program, "peak-raw", input) / Megabyte;
    return Report({"open_memory", "pugixml_load_MiB", 1.3}, ours, peer, ours / peer);
}

int RunChild(const QString& work, const Input& input)
{
    const auto timed = [](const std::function<void()>& run) {
        run(); // warm-up
        const auto start = std::chrono::steady_clock::now();
        run();
        const std::chrono::duration<double, std::milli> spent = std::chrono::steady_clock::now() - start;
        std::printf("%f\n", spent.count());
    };
    if (work == u"time-store"_s) {
        timed([&] { OpenStore(input); });
    } else if (work == u"time-dom"_s) {
        timed([&] { LoadDom(input); });
    } else {
        work == u"peak-store"_s ? OpenStore(input) : LoadRaw(input);
        std::printf("%lld\n", static_cast<long long>(platform::PeakMemory()));
    }
    return 0;
}

} // namespace bench

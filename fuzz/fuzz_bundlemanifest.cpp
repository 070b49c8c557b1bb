// Parses arbitrary bytes as the manifest of a support bundle, or as a part of one, which the last
// byte chooses. What is accepted must be the same after it was written and read again.

#include "fuzz.h"
#include <zeltools/supportbundle/supportbundlemanifest.h>

using zeltools::SupportBundleManifest;

namespace
{

void parse(const QByteArray& json)
{
    QString error;
    const auto manifest = SupportBundleManifest::parse(json, error);
    require(manifest.has_value() == error.isEmpty());
    if (!manifest)
        return;
    for (const auto& member : manifest->members)
        require(SupportBundleManifest::isSafeName(member.name) && member.sha256.size() == 32 &&
                member.size_B >= 0 && member.padded_B >= 0 && member.padded_B <= member.size_B);
    const auto again = SupportBundleManifest::parse(manifest->toJson(), error);
    require(again && again->members.size() == manifest->members.size() &&
            again->missing == manifest->missing);
    for (int i = 0; i < again->members.size(); ++i)
        require(again->members[i].name == manifest->members[i].name &&
                again->members[i].sha256 == manifest->members[i].sha256 &&
                again->members[i].size_B == manifest->members[i].size_B);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    silenceWarnings();
    const QByteArray bytes = toBytes(data, size);
    require(SupportBundleManifest::unescaped(SupportBundleManifest::escaped(bytes)) == bytes);
    const QByteArray head = R"({"format":"ZelTools support bundle","version":1,"members":[)";
    const QByteArray member = head + R"({"sha256":")" + QByteArray(64, 'a') + R"(","size":)";
    switch (size > 0 ? data[size - 1] % 5 : 0) {
    case 0:
        parse(bytes);
        break;
    case 1:
        parse(head + bytes);
        break;
    case 2:
        parse(member + bytes);
        break;
    case 3:
        parse(member + R"(7,"name":")" + bytes + R"("}]})");
        break;
    default:
        parse(member + R"(7,"name":"a"}],"missing":[)" + bytes + "]}");
    }
    return 0;
}

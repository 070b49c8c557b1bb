// Reads the input as a State Chart XML document, as the content of one, and as one made of pieces.
// What is accepted must come back from the document that is written from it.

#include "../tests/support/descriptionlines.h"
#include "fuzz.h"
#include <zeltools/declarativestatemachine/scxmlreader.h>
#include <zeltools/declarativestatemachine/scxmlwriter.h>
#include <zeltools/signalemitter.h>

using namespace zeltools::declarativestatemachine;

namespace
{

std::optional<StateMachineDescription> read(const QByteArray& document)
{
    static zeltools::SignalEmitter emitter, other;
    QString error;
    const ScxmlBindings bindings{[](const QString& event) {
                                     return ExpectedSignal{event == QLatin1String("a") ? &emitter
                                                                                       : &other,
                                                           SIGNAL(notify())};
                                 },
                                 [](const QString&) { return [] { return true; }; }};
    const auto description = fromScxml(document, bindings, error);
    require(description.has_value() == error.isEmpty());
    require(error.isEmpty() || error.startsWith(QLatin1String("line ")));
    return description;
}

void check(const QByteArray& document)
{
    const auto description = read(document);
    if (!description)
        return;
    const auto again = read(toScxml(*description, ScxmlExtensions::Written).toUtf8());
    require(again.has_value());
    require(support::linesOf(*again) == support::linesOf(*description));
    require(read(toScxml(*description).toUtf8()).has_value());
}

// A document with a piece for each byte. 64 bytes of text would hold one transition.
QByteArray fromPieces(const QByteArray& bytes)
{
    static const QVector<QByteArray> pieces{"<state id='A'>",
                                            "</state>",
                                            "<state id='B' initial='C'>",
                                            "<state id='C'>",
                                            "<state id='D.1' zel:name='A'>",
                                            "<state id='E' zel:name='' zel:timeLimit='1s'>",
                                            "<parallel id='P'>",
                                            "</parallel>",
                                            "<final id='F'/>",
                                            "<final id='G'/>",
                                            "<history id='H'/>",
                                            "<history id='I' type='deep'>",
                                            "</history>",
                                            "<initial><transition target='D.1'/></initial>",
                                            "<onentry>",
                                            "</onentry>",
                                            "<onexit>",
                                            "</onexit>",
                                            "<raise event='r'/>",
                                            "<send event='t' id='s' delay='1.5s'/>",
                                            "<send event='u' id='v' delay='0ms'/>",
                                            "<cancel sendid='s'/>",
                                            "<cancel sendid='v'/>",
                                            "<transition event='r'",
                                            "<transition event='t'",
                                            "<transition event='u'",
                                            "<transition event='a'",
                                            "<transition event='a.b'",
                                            "<transition",
                                            " cond='g'",
                                            " target='A'",
                                            " target='C'",
                                            " target='D.1'",
                                            " target='H'",
                                            " target='I'",
                                            " target='P'",
                                            " target='F'",
                                            " zel:implied='true'",
                                            "/>",
                                            "><log label='&#10;&quot;'/></transition>"};
    QByteArray content;
    for (const char byte : bytes)
        content += pieces[uchar(byte) % pieces.size()];
    return content;
}

QByteArray machineOf(const QByteArray& content)
{
    return "<scxml xmlns='http://www.w3.org/2005/07/scxml' "
           "xmlns:zel='urn:zeltools:statemachine' version='1.0'>" +
           content + "</scxml>";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes = toBytes(data, size);
    check(bytes);
    check(machineOf("<state id='A'>" + bytes + "</state><final id='F'/>"));
    check(machineOf(fromPieces(bytes)));
    return 0;
}

#include "cli/printing/JsonWriter.h"
#include "support/PrintText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using cli::JsonWriter;

namespace {

JsonWriter& WriteExample(JsonWriter& json)
{
    json.BeginObject();
    json.Key(u"z").Number(-1);
    json.Key(u"a").BeginArray().Bool(true).Text(u"t").EndArray();
    json.Key(u"none").BeginArray().EndArray();
    return json.EndObject();
}

} // namespace

TEST(JsonWriter, KeysStayInTheOrderOfWriting)
{
    JsonWriter json(JsonWriter::Style::OneLine);
    EXPECT_EQ(WriteExample(json).Result(), u"{\"z\":-1,\"a\":[true,\"t\"],\"none\":[]}\n"_s);
}

TEST(JsonWriter, IndentedStylePutsEveryEntryOnALine)
{
    JsonWriter json(JsonWriter::Style::Indented);
    EXPECT_EQ(WriteExample(json).Result(),
              u"{\n  \"z\": -1,\n  \"a\": [\n    true,\n    \"t\"\n  ],\n  \"none\": []\n}\n"_s);
}

TEST(JsonWriter, QuotesBackslashesAndControlCharactersAreEscaped)
{
    JsonWriter json(JsonWriter::Style::OneLine);
    json.Text(u"a\"b\\c\nd\x01/管");
    EXPECT_EQ(json.Result(), u"\"a\\\"b\\\\c\\u000ad\\u0001/管\"\n"_s);
}

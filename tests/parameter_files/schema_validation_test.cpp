// SPDX-License-Identifier: Apache-2.0
#include "tests/support/generated_database.h"
#include "tests/support/machine_parameters.h"
#include "tests/support/schema_check.h"
#include "tests/support/small_parameter_file.h"

#include <zantrel/sample/sample_database.h>
#include <zantrel/sample/sample_layout.h>

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

std::string const Schema = XmlSchema("build_processing_2016_04.xsd");

} // namespace

TEST(SchemaOfMachineParameters, TakesWhatIsWritten) {
    Sample::ParameterLayout const sample;
    Sample::ParameterDatabase database(&sample);
    database.PopulateDefault();
    Documents documents = {MachineParameters(database, true), MachineParameters(database, false)};
    for (unsigned seed = 1; seed <= 20; ++seed) {
        Generator generator(seed);
        std::unique_ptr<ParameterLayout> const layout = generator.MakeLayout();
        ParameterDatabase generated(layout.get());
        generator.FillContent(generated.GetProfileEditor());
        documents.insert(documents.end(),
                         {MachineParameters(generated, true), MachineParameters(generated, false)});
    }
    ExpectAllValid(documents, Schema);
}

TEST(SchemaOfMachineParameters, RefusesEachMistake) {
    SmallLayout const layout;
    ParameterDatabase database(&layout);
    ASSERT_TRUE(ReadText(database, SmallFile));
    ExpectAllRefused(MachineParameters(database, false),
                     {{"another namespace", {{"2016/04'", "2016/05'"}}},
                      {"a property without a name", {{" Name='I'", ""}}},
                      {"a property without a type", {{" Type='bool'", ""}}},
                      {"an unknown type word", {{"'bool'", "'Bool'"}}},
                      {"a mark with a value", {{"ProfileList=''", "ProfileList='True'"}}},
                      {"a flag", {{"Name='G'", "Name='G' ReadOnly='true'"}}},
                      {"an item with a name", {{"<Instance>", "<Instance Name='x'>"}}},
                      {"a profile without a name", {{"<Profile Name='in'>", "<Profile>"}}},
                      {"a default profile with a name", {{"<Default>", "<Default Name='x'>"}}},
                      {"two default profiles", {{"<Default>", "<Default/><Default>"}}},
                      {"a default profile behind others", {{"</Profile>", "</Profile><Default/>"}}},
                      {"an item beside properties", {{"</Property>", "</Property><Instance/>"}}},
                      {"a profile below the root", {{"<Property", "<Profile Name='x'/><Property"}}},
                      {"text below the root", {{"<Property", "x<Property"}}},
                      {"an unknown element", {{">-8<", "><Value/><"}}},
                      {"a file without data", {{"<Data>AP8=</Data>", ""}}},
                      {"data that is no base64", {{"AP8=", "AP8"}}}},
                     Schema);
}

// SPDX-License-Identifier: Apache-2.0
#pragma once

/// All of the library. A host that wants less includes the headers it needs: each stands alone.

#include <zantrel/version.h>

#include <zantrel/build_ticket/build_ticket.h>
#include <zantrel/build_ticket/build_ticket_file.h>

#include <zantrel/database/content_list.h>
#include <zantrel/database/parameter_database.h>
#include <zantrel/database/parameter_misuse.h>
#include <zantrel/database/parameter_node.h>
#include <zantrel/database/parameter_view.h>
#include <zantrel/database/value_type.h>
#include <zantrel/database/visit_value.h>
#include <zantrel/database/walk.h>

#include <zantrel/layout/layout_node.h>
#include <zantrel/layout/layout_node_attributes.h>
#include <zantrel/layout/layout_node_source.h>
#include <zantrel/layout/layout_nodes.h>
#include <zantrel/layout/node_type.h>
#include <zantrel/layout/parameter_layout.h>
#include <zantrel/layout/resource_dictionary.h>

#include <zantrel/layout_files/meta_file.h>
#include <zantrel/layout_files/property_template.h>

#include <zantrel/parameter_files/generic_parameter_file.h>
#include <zantrel/parameter_files/io_filtering.h>
#include <zantrel/parameter_files/machine_parameters_file.h>
#include <zantrel/parameter_files/parameter_file_validity.h>
#include <zantrel/parameter_files/value_edit.h>

#include <zantrel/io/mfile.h>
#include <zantrel/io/path.h>
#include <zantrel/io/uuid.h>
#include <zantrel/sax/prepared_tag.h>
#include <zantrel/sax/read_limits.h>
#include <zantrel/sax/read_report.h>
#include <zantrel/sax/sax_persist.h>
#include <zantrel/sax/sax_reader.h>
#include <zantrel/sax/sax_utilities.h>
#include <zantrel/sax/sax_writer.h>
#include <zantrel/sax/tag_writer.h>
#include <zantrel/sax/write_report.h>
#include <zantrel/sax/xml_namespaces.h>
#include <zantrel/store/external_properties.h>
#include <zantrel/store/file_content.h>
#include <zantrel/store/indexed_properties.h>
#include <zantrel/store/persistent_properties.h>
#include <zantrel/store/persistent_property.h>
#include <zantrel/store/property_creator.h>
#include <zantrel/store/property_filter.h>
#include <zantrel/store/property_names.h>
#include <zantrel/store/property_values.h>
#include <zantrel/store/sub_properties.h>
#include <zantrel/text/stream_text_out.h>
#include <zantrel/text/string_conversion.h>

#include <zantrel/sample/sample_database.h>
#include <zantrel/sample/sample_layout.h>
#include <zantrel/sample/sample_names.h>

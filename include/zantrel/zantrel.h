// SPDX-License-Identifier: Apache-2.0
#pragma once

/// All of the library. A host that wants less includes the headers it needs: each stands alone.

#include <zantrel/build_ticket/build_ticket.h>
#include <zantrel/build_ticket/build_ticket_file.h>

#include <zantrel/database/content_list.h>
#include <zantrel/database/parameter_database.h>
#include <zantrel/database/parameter_node.h>

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

#include <zantrel/platform/entry_name.h>
#include <zantrel/platform/entry_table.h>
#include <zantrel/platform/external_properties.h>
#include <zantrel/platform/file_content.h>
#include <zantrel/platform/indexed_properties.h>
#include <zantrel/platform/mfile.h>
#include <zantrel/platform/persistent_properties.h>
#include <zantrel/platform/persistent_property.h>
#include <zantrel/platform/property_creator.h>
#include <zantrel/platform/property_filter.h>
#include <zantrel/platform/property_names.h>
#include <zantrel/platform/property_values.h>
#include <zantrel/platform/read_report.h>
#include <zantrel/platform/sax_persist.h>
#include <zantrel/platform/sax_reader.h>
#include <zantrel/platform/sax_utilities.h>
#include <zantrel/platform/sax_writer.h>
#include <zantrel/platform/stream_text_out.h>
#include <zantrel/platform/string_conversion.h>
#include <zantrel/platform/sub_properties.h>
#include <zantrel/platform/tag_writer.h>
#include <zantrel/platform/uuid.h>
#include <zantrel/platform/write_report.h>
#include <zantrel/platform/xml_namespaces.h>

#include <zantrel/sample/sample_database.h>
#include <zantrel/sample/sample_layout.h>
#include <zantrel/sample/sample_names.h>

// The class interface of libquor_g16_gjf, all of it.
#pragma once

#include <gjf/core/check/checker.hpp>
#include <gjf/core/chemistry/elements.hpp>
#include <gjf/core/chemistry/layers.hpp>
#include <gjf/core/document/gjf_document.hpp>
#include <gjf/core/editor/gjf_editor.hpp>
#include <gjf/core/editor/gjf_multi_editor.hpp>
#include <gjf/core/job/gjf_data.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/job/job_comparison.hpp>
#include <gjf/core/job/positions.hpp>
#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/knowledge/knowledge.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/reader/job_layout.hpp>
#include <gjf/core/reader/job_places.hpp>
#include <gjf/core/reader/job_text.hpp>
#include <gjf/core/route/joined_route.hpp>
#include <gjf/core/route/keyword_parser.hpp>
#include <gjf/core/route/route_scanner.hpp>
#include <gjf/core/route/route_tree.hpp>
#include <gjf/core/route_schema_paths.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/schema/schema_validation.hpp>
#include <gjf/core/schema/simple_yaml_parser.hpp>
#include <gjf/core/selection/selection.hpp>

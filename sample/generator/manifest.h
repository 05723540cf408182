#pragma once
// The manifest: a tab-separated text in the installation's folder that says what the
// sample holds, so that checks need not work it out again. Lines, by their first field:
//   sample     version  TILES  ASSETS    the generated tiles and blueprints
//   file       PATH  SIZE  CRC32          every loose file but the manifest itself
//   member     ARCHIVE  NAME  SIZE  CRC32 every file inside an .ap
//   route      FOLDER  FORM  NAME         FORM: loose, archive (MainContent.ap only) or
//                                         no-properties; NAME: the first language with a text
//   scenario   ROUTE  FOLDER  CLASS  NAME
//   reference  STATE  PROVIDER  PRODUCT  BLUEPRINTID  USED-BY
//   stock      PATH  KIND  CATEGORY  IN-SCENE  CLASS  NAME
//                                         a generated asset and the row the asset list
//                                         shows for it; KIND broken or empty: none
// A reference's STATE is present (the loose file exists as written), case (it exists
// only when letter case is ignored), archived (only inside an .ap) or missing.

#include <string>

#include "generator/plan.h"

namespace ferrolund::sample {

std::string ManifestText(const SampleWriter& writer, const PlanRunner& plan);

}  // namespace ferrolund::sample

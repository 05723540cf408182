#pragma once
// The screen benchmarks; each prints its figures and gives the exit code.

// The editor on a scenario of about `megabytes` MB of XML (30 when 0).
int EditorOpenBench(int megabytes);
// The asset list filling from an installation of `blueprints` generated blueprints
// (50,000 when 0), with "&Abort" clicked part-way on a second run.
int AssetListBench(int blueprints);
// The Scenario Details screen on a scenario of about `megabytes` MB of XML (30 when 0).
int ScenarioDetailsBench(int megabytes);
// The Scenario Editor opened on, then saving, a scenario of about `megabytes` MB of XML
// (30 when 0).
int ScenarioEditorBench(int megabytes);
// The texture viewer's picture pane: decoding a 2048 x 2048 DXT5 texture for display, then
// `runs` repaints at each of several zooms (30 when 0).
int PicturePaneBench(int runs);

// lwoconvert without its command line, for a worker of a page.
//
//   convertModel("tree.glb", "made/tree.lwo"); // {"findings": []}
#pragma once

extern "C" {
// Makes a .lwo with its pictures beside it, or a .glb, of a model of any format that can be read,
// in place of what is there. Returns JSON that holds until the next call: {"findings"}, what could
// not be kept as lwoinfo --json has findings, or {"problem"}, why nothing was written.
const char *convertModel(const char *in, const char *out);
}

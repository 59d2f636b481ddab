// Switches on render objects and sub-objects, and the iterator that applies an operation to all
// sub-objects of a layer.
#include "renderer/lwoRenderer.h"

void forAllSubObjsDo(void (*function)(st_subObj *, void *), st_rObj *rObj, void *argument) {
    for (int i = 0; i < rObj->subObjCount; i++)
        function(&rObj->subObjs[i], argument);
}

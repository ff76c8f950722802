#include "controls/form.h"

namespace tonquay::controls {

void Form::load()
{
    if (isLoaded())
        return;
    state_ = State::loaded;
    loading_ = true;
    onLoad();
    loading_ = false;
    if (unloadAfterLoad_) {
        unloadAfterLoad_ = false;
        unload();
    }
}

void Form::show()
{
    load();
    if (!isLoaded())
        return;
    state_ = State::shown;
    broughtToFront.tell();
}

void Form::unload()
{
    if (!isLoaded())
        return;
    if (loading_) {
        unloadAfterLoad_ = true;
        return;
    }
    onQueryUnload();
    state_ = State::notLoaded;
    design();
}

}

#pragma once

#include "state/cdrecalt_controls.h"
#include "state/cdrip1_controls.h"
#include "state/cdriptab_controls.h"
#include "state/id3auto_controls.h"
#include "state/other_forms.h"
#include "state/popa_controls.h"
#include "state/ripdeck_controls.h"
#include "state/trkcust_controls.h"

#include <tuple>

namespace tonquay::state {

/// Every form of the program, one of each. Reaching a form by its name loads it on first touch; loaded() asks without
/// loading. The controls themselves live as long as the program.
class Forms {
public:
    RipdeckControls& ripdeck() { return ripdeck_; }
    Cdrip1Controls& cdrip1() { return touch(cdrip1_); }
    CdriptabControls& cdriptab() { return touch(cdriptab_); }
    CdripbgControls& cdripbg() { return touch(cdripbg_); }
    CdrecaltControls& cdrecalt() { return touch(cdrecalt_); }
    TrkcustControls& trkcust() { return touch(trkcust_); }
    Id3autoControls& id3auto() { return touch(id3auto_); }
    PopaControls& popa() { return touch(popa_); }

    /// A form's controls without loading it: for its own behaviour and its view, and to show or unload it. A form that
    /// does its work while it loads and then unloads itself must not be touched first and shown after.
    template <class Controls>
    Controls& controlsOf()
    {
        return std::get<Controls&>(all());
    }

    template <class Controls>
    bool loaded()
    {
        return controlsOf<Controls>().form.isLoaded();
    }

private:
    template <class Controls>
    static Controls& touch(Controls& controls)
    {
        controls.form.load();
        return controls;
    }

    std::tuple<Cdrip1Controls&, CdriptabControls&, CdripbgControls&, CdrecaltControls&, TrkcustControls&,
               Id3autoControls&, PopaControls&>
    all()
    {
        return {cdrip1_, cdriptab_, cdripbg_, cdrecalt_, trkcust_, id3auto_, popa_};
    }

    RipdeckControls ripdeck_;
    Cdrip1Controls cdrip1_;
    CdriptabControls cdriptab_;
    CdripbgControls cdripbg_;
    CdrecaltControls cdrecalt_;
    TrkcustControls trkcust_;
    Id3autoControls id3auto_;
    PopaControls popa_;
};

}

#include "app/program.h"

#include "deck/caption_size.h"
#include "deck/pressed_looks.h"
#include "deck/volume.h"

#include <utility>

namespace tonquay::app {

Program::Program(platform::Platform platform)
    : platform_(platform),
      engine_(state_, forms_, platform_),
      discTable_(state_, forms_, platform_.acd, platform_.loop),
      titleEdit_(state_, forms_.ripdeck(), platform_.acd, platform_.dialogs),
      setupPage_(state_, forms_, discTable_, platform_, [this] { tagPage_.load(); }),
      analogCapture_(state_, forms_, platform_),
      controlProgress_(state_, forms_.ripdeck(), platform_.acd),
      partialSelection_(state_, forms_, platform_),
      programFiles_(state_, forms_, platform_),
      lateTags_(state_, platform_),
      encoders_(state_, forms_, platform_, [this](const encode::StartedEncoder& encoder) { encoderStarted(encoder); }),
      extraction_(state_, forms_, engine_, platform_),
      driver_(state_, forms_, extraction_, encoders_, programFiles_, platform_),
      tagger_(state_, forms_, platform_),
      tagPage_(state_, forms_, platform_),
      programEnd_(state_, forms_.ripdeck(), platform_),
      preview_(state_, forms_, engine_.playback(), platform_),
      runCommands_(state_, forms_, driver_, preview_, platform_),
      commandKeys_(state_, forms_, programEnd_, platform_),
      discWatch_(state_, forms_.ripdeck(), programEnd_, platform_),
      shell_(state_, forms_, platform_),
      popupMenu_(state_, forms_, {commandKeys_, programEnd_, shell_, driver_, programFiles_}),
      startUp_(state_, forms_, discTable_, platform_)
{
    forms_.ripdeck().Timer1.bind(platform_.loop);
    deck::wireVolume(forms_.ripdeck(), forms_.controlsOf<state::Cdrip1Controls>());
    deck::wireCaptionSize(forms_.ripdeck());
    deck::wirePressedLooks(forms_.ripdeck());
}

void Program::followEncoders(std::function<void(const encode::StartedEncoder&)> follower)
{
    encoderFollower_ = std::move(follower);
}

void Program::encoderStarted(const encode::StartedEncoder& encoder)
{
    lateTags_.encoderStarted(encoder.row, encoder.child, encoder.encodedPath);
    if (encoderFollower_)
        encoderFollower_(encoder);
}

void Program::start(std::wstring_view commandLine)
{
    startUp_.run(commandLine);
    forms_.ripdeck().form.show();
}

}

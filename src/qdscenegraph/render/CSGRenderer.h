// The renderer's side of the scene graph. Nothing is drawn here: the library runs without a graphics
// interface.
#pragma once

class CSGRenderer
{
  public:
    enum EBehavior
    {
        BEHAVIOR_NO_GRAPHICS // scene graphs are built, saved and loaded, never drawn
    };

    static void SetBehavior(EBehavior eBehavior) { ms_eBehavior = eBehavior; }
    static EBehavior GetBehavior() { return ms_eBehavior; }

  private:
    static inline EBehavior ms_eBehavior = BEHAVIOR_NO_GRAPHICS;
};

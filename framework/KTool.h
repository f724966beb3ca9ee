#pragma once

#include <memory>

#include "framework/KEffectImage.h"
#include "framework/KInput.h"
#include "framework/KProcessImage.h"
#include "host/graph/Operator.h"

namespace ombrelune {

/// Marks a standard input that is declared without a default of its own.
inline constexpr float kNoDefault = -123456.0F;

/// The bridge between one effect and one node of the host: declares the effect's inputs and outputs, and for
/// each frame reads the inputs into the effect, prepares the images, runs the engine and hands the results
/// over. Joined with an operator class of the host in a shell. Holds the state of one render, so it renders
/// one frame at a time.
class KTool {
public:
    KTool() = default;
    virtual ~KTool() = default;
    KTool(KTool const&) = delete;
    KTool& operator=(KTool const&) = delete;

    // Declaring, once, from the shell's Initialise (KToolInputs.cpp).

    /// Makes an input for each parameter, the framework's standard inputs on a page of their own, and the
    /// outputs.
    void AddEffectInputs(ThreadedOperator* host, KEffect* toolEffect);
    void SetInputHost(ThreadedOperator* host) { inputHost = host; }
    /// Opens the framework's page. A second call does nothing.
    void AddControlPageBF();
    /// A standard input, made once; the first one of a set.
    Input* AddInputBF(KParameterStandard standard, float value = kNoDefault);

    // Rendering (KTool.cpp, KToolFiles.cpp), on the host's calling thread.

    virtual void StartProcess();
    virtual void PreCalcProcess(Request* request);
    virtual void PreProcess(Request* request);
    virtual void ProcessInputs(Request* request, bool all);
    virtual void ProcessInputs_AdaptToImage(bool all);
    virtual void ProcessSetData(ThreadedOperator* op, Request* request, int scale, bool interlaced, int field,
                                float fieldXAspect, float fieldYAspect);
    virtual void ProcessCleanUp();
    virtual void ProcessDo(ThreadedOperator* op, Request* request, bool cleanUp);
    virtual void Notify(Input* input, Parameter* value, float time);

    /// File that the effect reads, from its first filename input that is shown; empty for none.
    std::string FileToRead(Request const& request) const;

    /// Shows or hides every input of the effect.
    void ShowInputs(bool show);

    /// True when the tool's trails are on, or may be at some time.
    bool MayLeaveTrails(OperatorState const& state) const;

    KProcessImageData const& Data() const { return data; }
    KInputList const& EffectInputs() const { return inputs; }

protected:
    // One operation per control, named after it; each ends with AddInput_Flags.
    Input* AddInput_Basic(KString const& label, TagList const& tags);
    void AddInput_Flags(Input* input, unsigned flags);
    Input* AddGroupStart(KParameter const& parameter);
    void AddGroupEnd();
    Input* AddInput_Angle(KParameter const& parameter);
    Input* AddInput_Button(char const* label, unsigned flags);
    Input* AddInput_Buttons(char const* label, unsigned flags, float value, KNames names);
    Input* AddInput_Choice(KParameter const& parameter);
    Input* AddInput_Checkbox(char const* label, unsigned flags, float value, float width);
    void AddInput_Color(KParameter& parameter);
    Input* AddInput_Curve(KParameter const& parameter);
    Input* AddInput_Filename(KParameter const& parameter);
    Input* AddInput_Image(KParameter const& parameter);
    Input* AddInput_Label(KParameter const& parameter);
    Input* AddInput_Matte(char const* label, unsigned flags);
    Input* AddInput_Object(KParameter const& parameter);
    Input* AddInput_Point(KParameter const& parameter);
    void AddInput_Point3D(KParameter& parameter);
    void AddInput_Range(KParameter& parameter);
    Input* AddInput_Slider(KParameter const& parameter);
    Input* AddInput_Screw(KParameter const& parameter);
    Input* AddInput_Text(KParameter const& parameter);
    void AddInput_Transformation(KParameter& parameter);

    void AddEffectInputs(KEffect* toolEffect);
    void AddParameterInputs(KParameter& parameter);
    void AddKInput(std::uint32_t id, Input* input, KParameter& parameter, int sub = 0);
    void AddStandardInputs();
    Input* AddMainImageInput(bool isOptional);
    Input* AddChannelInputs(int count);
    Input* AddTrailsInputs();
    void AddOutputs();

    void ReadStandardInputs(Request* request);
    void ReadValue(KInput const& entry, Parameter const* value);
    void MakeDestination(ThreadedOperator* op, Request* request, int scale, bool interlaced, int field,
                         float fieldXAspect, float fieldYAspect);
    void MakeGeneratorImage(ThreadedOperator* op, Request* request, int scale, bool interlaced, int field,
                            float fieldXAspect, float fieldYAspect);
    void ProcessImage(ThreadedOperator* op, Request* request, KEffectImage* imageEffect);
    std::unique_ptr<KImage> SourceWithTrails(KEffectImage* imageEffect);
    void SetOutputs(Request* request);
    void BreakOff();
    /// Effects say nothing of their files, so the bridge does: warns of one that is missing, cannot be read,
    /// is huge or is no text; false after a report of what is no file at all.
    bool CheckFile(Request* request) const;
    /// First filename input that is shown and names a file; null for none.
    Input* FileInput(Request const& request) const;
    std::string ResolvedFile(std::string const& name) const;
    void RenameChannels(int colorSpace);
    void ApplyAffectInputs(Input* input, Parameter* value, float time);
    /// The effect as one with an image output, else null.
    KEffectImage* ImageEffect() const;

    KEffect* effect = nullptr; ///< owned by the shell, which holds it as a member
    KInputList inputs;
    ThreadedOperator* inputHost = nullptr;
    bool controlPageDone = false;
    bool preProcessNeeded = false;
    bool shapeTool = false;
    int nextPreviewControl = 1;
    int nextOutput = 1;
    Input* lastPointInput = nullptr;

    // The standard inputs, null until made.
    Input* mainImageInput = nullptr;
    Input* widthInput = nullptr; ///< generators only, the host base's
    Input* heightInput = nullptr;
    Input* colorSpaceInput = nullptr;
    Input* channelInputs[4] = {};
    Input* underSampleInput = nullptr;
    Input* filteringInput = nullptr; ///< or sub-pixel sampling: a tool has one or the other
    Input* superSampleInput = nullptr;
    Input* superSampleFilterInput = nullptr;
    Input* edgesInput = nullptr;
    Input* preDivideInput = nullptr;
    Input* trailsInput = nullptr;
    Input* fadeInput = nullptr;
    Input* resetInput = nullptr;
    Input* multiThreadingInput = nullptr;
    Input* warpMaskInput = nullptr;

    // One render.
    Output* imageOutput = nullptr;
    KImage* source = nullptr; ///< for a generator the same object as the destination
    KImage* destination = nullptr;
    KProcessImageData data;
    std::unique_ptr<KProcessImage> engine;
    int currentStep = 0;

    // Set by the generator shell from its host base, just before a render.
    int fieldCount = 0, fieldNumber = 0;
    float scale = 1.0F;
    float xAspect = 1.0F, yAspect = 1.0F;
};

} // namespace ombrelune

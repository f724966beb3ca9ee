// Project: looks around in a room whose walls are pictures, with another one hung into it.

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numbers>
#include <optional>

#include "framework/PixelConversion.h"
#include "framework/Registration.h"
#include "tools/image/scene/SceneView.h"

namespace ombrelune {

class KEffectProject : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Pjt", "Projection"); }

    KEffectProject()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Project");
        AddFace(kTop,   "Top",   "ImS0"_id, "ImP0"_id);
        AddFace(kFront, "Front", "ImaJ"_id, "ImP4"_id);
        AddFace(kBack,  "Back",  "ImaG"_id, "ImP5"_id);
        AddFace(kLeft,  "Left",  "ImaN"_id, "ImP2"_id);
        AddFace(kRight, "Right", "ImaU"_id, "ImP3"_id);
        parameters.AddSlider(&cameraAngle, 60.0F, "Camera Angle", "CaAn"_id, 0, 1.0, 179.0);

        parameters.AddChapter("Merge");
        parameters.AddImage  (&hung, "Image to be combined", 2, KF_MainInput);
        parameters.AddButtons(&rotationOrder, 0, "Rotation Order", "ScRo"_id, 0, {"XYZ", "XZY", "YXZ", "YZX", "ZXY", "ZYX"});
        parameters.AddAngle  (&angleX, 0.0F, "Angle X", "ScAX"_id, 0, KAngle_Radians);
        parameters.AddAngle  (&angleY, 0.0F, "Angle Y", "ScAY"_id, 0, KAngle_Radians);
        parameters.AddAngle  (&angleZ, 0.0F, "Angle Z", "ScAZ"_id, 0, KAngle_Radians);
        parameters.AddScrew  (&position.x, 0.0F, "Position X", "MePX"_id, soft, -1.0, 1.0);
        parameters.AddScrew  (&position.y, 0.0F, "Position Y", "MePY"_id, soft, -1.0, 1.0);
        parameters.AddScrew  (&position.z, 0.0F, "Position Z", "MePZ"_id, soft, -1.0, 1.0);
        parameters.GroupStart("Local transformatons", "Loca"_id, 0);
        parameters.AddButtons(&localOrder, 0, "Local Rotation Order", "MeRo"_id, 0, {"XYZ", "XZY", "YXZ", "YZX", "ZXY", "ZYX"});
        parameters.AddAngle  (&localX, 0.0F, "Local Angle X", "MeAX"_id, 0, KAngle_Radians);
        parameters.AddAngle  (&localY, 0.0F, "Local Angle Y", "MeAY"_id, 0, KAngle_Radians);
        parameters.AddAngle  (&localZ, 0.0F, "Local Angle Z", "MeAZ"_id, 0, KAngle_Radians);
        parameters.AddSlider (&sizeX, 1.0F, "Size X", "MeSX"_id, KF_SoftMax, 0.0, 5.0);
        parameters.AddSlider (&sizeY, 1.0F, "Size Y", "MeSY"_id, KF_SoftMax, 0.0, 5.0);
        parameters.GroupEnd();
        parameters.AddSlider (&blend, 1.0F, "Blend", "MeBl"_id, 0, 0.0, 1.0);
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        double const degrees = std::min(std::max(cameraAngle, 1.0F), 179.0F);
        reach = 2.0 * std::tan(degrees * std::numbers::pi / 360.0);
        // The camera turns, so all else turns the other way.
        camera = KMatrix4().Rotate(angleX, angleY, angleZ, rotationOrder);
        toCamera = camera.Inverse();
        SceneFrame const frame(*source);
        isRoom = std::any_of(faces, faces + kFloor, [](Face const& face) { return face.picture != nullptr; });
        faces[kFloor] = {isRoom ? source : nullptr, 0};
        for (std::size_t i = 0; i < kFaces; ++i) {
            walls[i].reset();
            if (KImage* const face = faces[i].picture)
                walls[i].emplace(*face, PictureFit::ToSquare(*face, faces[i].upperHalf == 1), Seen(WallOf(i)),
                                 frame, true);
        }
        panel.reset();
        if (hung && blend > 0.0F) {
            // At rest it hangs on the front wall, as wide as that.
            KMatrix4 const place = KMatrix4()
                                       .Move(position.x, position.y, position.z - 1.0F)
                                       .Rotate(localX, localY, localZ, localOrder)
                                       .Scale(2.0F * sizeX, 2.0F * sizeY, 1.0F);
            panel.emplace(*hung, PictureFit::ToWidth(*hung), Seen(place), frame, true);
        }
        return true;
    }

    Pixel F(int x, int y, KImage* source) override { return RoundedPixel(FFlt(x, y, source)); }
    FltPixel FFlt(int x, int y, KImage* source) override
    {
        FltPixel result;
        source->GetPixel(x, y, result);
        if (isRoom)
            for (float& word : result.word) word = 0.0F;
        if (auto const& wall = walls[WallAt(x, y)]) LayOver(result, wall->At(x, y, kEdgeDuplicate));
        if (panel) {
            FltPixel over = panel->At(x, y, kEdgeBlack);
            for (float& word : over.word) word *= blend;
            LayOver(result, over);
        }
        return result;
    }

    void Done(KImage** destination) override
    {
        for (auto& wall : walls) wall.reset();
        panel.reset();
        KEffectPixel::Done(destination);
    }

    struct Face {
        KImage* picture = nullptr;
        int upperHalf; // 0 the whole picture, 1 its upper half
    };
    enum Wall : std::size_t { kTop, kFront, kBack, kLeft, kRight, kFloor, kFaces };

    Face faces[kFaces]; // the source is the floor
    float cameraAngle;  // degrees across the frame
    KImage* hung = nullptr;
    int rotationOrder;
    float angleX, angleY, angleZ; // of the camera
    KVector3 position;            // 1 is from the middle of the room to a wall
    int localOrder;
    float localX, localY, localZ;
    float sizeX, sizeY;
    float blend;

private:
    void AddFace(Wall wall, char const* label, std::uint32_t id, std::uint32_t partId)
    {
        KString text;
        parameters.AddImage(&faces[wall].picture, label, id, 0);
        parameters.AddButtons(&faces[wall].upperHalf, 0, text.Concatenate("Part To Use - ", label), partId, 0,
                              {"Use full", "Use top half only"});
    }

    /// The room reaches from -1 to 1; x to the right, y up, the front wall at z = -1. A wall's places are -1
    /// to 1 as seen from the middle, those of top and floor with the front
    /// wall below and above.
    static KMatrix4 WallOf(std::size_t wall)
    {
        // Columns: to the right on the wall, up on it, away from it, its middle.
        switch (wall) {
        case kTop: return {1, 0, 0, 0, 0, 0, -1, 1, 0, 1, 0, 0, 0, 0, 0, 1};
        case kFloor: return {1, 0, 0, 0, 0, 0, 1, -1, 0, -1, 0, 0, 0, 0, 0, 1};
        case kBack: return {-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 1, 0, 0, 0, 1};
        case kLeft: return {0, 0, 1, -1, 0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 0, 1};
        case kRight: return {0, 0, -1, 1, 0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 0, 1};
        default: return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, -1, 0, 0, 0, 1};
        }
    }

    PlaneMatrix Seen(KMatrix4 const& place) const
    {
        KMatrix4 const m = toCamera * place;
        double const r = reach;
        return {m[0] / r, m[1] / r,      m[3] / r,      m[4] / r,      m[5] / r,
                m[7] / r, -double{m[8]}, -double{m[9]}, -double{m[11]}};
    }

    /// What the ray through the middle of a pixel meets.
    std::size_t WallAt(int x, int y) const
    {
        double const across = (x + 0.5) / width - 0.5;
        double const up = (y + 0.5 - height / 2.0) / (width * static_cast<double>(pixelAspect));
        KVector3 const ray =
            camera * KVector3(static_cast<float>(across * reach), static_cast<float>(up * reach), -1.0F);
        float const ax = std::abs(ray.x), ay = std::abs(ray.y), az = std::abs(ray.z);
        if (ay > ax && ay > az) return ray.y > 0.0F ? kTop : kFloor;
        if (ax > az) return ray.x > 0.0F ? kRight : kLeft;
        return ray.z < 0.0F ? kFront : kBack;
    }

    double reach = 1.0; // width of the frame one away from the camera
    KMatrix4 camera, toCamera;
    bool isRoom = false; // else the source is what lies behind the hung picture
    std::array<std::optional<SeenPlane>, kFaces> walls;
    std::optional<SeenPlane> panel;
};

OMBRELUNE_TOOL(BF_Project, BF_ThreadedOperator, KEffectProject);

} // namespace ombrelune

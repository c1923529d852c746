#include "falcon-info/fields.h"

namespace kestrel::falconinfo {

std::string_view FieldsText() {
  return R"(Every report has "file" and "kind", or "error" for what could not be read. null is what no file tells.

campaign (.cam, .tac, .trn)
  container        data_version; parts: name, position, size, unpacked_size as the part tells it
  campaign         data_version, theater, scenario, save_name, shown_name, width and height of the theater,
                   bullseye_x and bullseye_y, all in map units from the lower left corner
  teams            number, name, motto, side, active, in_play, flag, colour, stance towards each of the eight
  objectives_from  the file that holds the objectives; objective_count; names_missing; notes: what was odd
  changes          of a mission: told, applied, of_no_objective, states_do_not_fit, strange_owners
  tables, records, classes  as of objects
  objectives       id, creator, camp_id, name as it is shown, class_index, type, type_name, class_name,
                   features (how many its class has), x, y (map units), exact (north, east, height: feet; heading),
                   owner, supply, fuel, losses, states (of each feature: 0 whole, 1 repaired, 2 damaged, 3 destroyed),
                   first_owner, flags, priority, name_id, own_name, parent, radar, links (ids),
                   before: owner, supply, fuel, losses, states without the mission's changes where these differ;
                   with --objective also class

campaigns (a folder of them)
  tables, records, classes  as of objects
  general_strings  how many; camp_objects: how many; stations: count, trouble
  campaigns        of each file: campaign, objectives_from, objective_count, changes, names_missing, notes

table (a file with one)
  table, records (how many, empty slots included), asked: table, index, record

objects (a folder of tables)
  tables           of each: table, file, records (how many)
  records          asked for by --record: table, index, record
    ct             domain, class, type, sub_type, specific, owner, models (7), data, data_index
    ocd            class_index, name, icon, first_feature, feature_count, radar_feature, first_header
    fed            class_index, flags, value, east, north, up (feet), heading
    fcd            class_index, flags, name, repair_time, hit_points
    phd            objective, type, first_point, point_count, features, data, runway_number, base_leg, next
    pd             east, north, up (feet), type, flags
  classes          asked for by --class: class_index, type, type_name, objective (as ocd),
                   features: number, name, entry (as fed), models by state (4);
                   headers: index, header (as phd), points (as pd);
                   runway_ends: runway, name, heading, begin and far_end (east, north)
  models           asked for by --model: number, shape (as of a .bml), box where the shape cannot be read, trouble
objective class (its folder in ObjectiveRelatedData)
  tables, and the fields of a class from objective on

campaign objects (CampObjData.XML)
  count, objects: camp_id, name, heading, north, east, height (feet)

strings (.idx, .wch, Strings.txt)
  index_file, text_file, count, damaged, strings: number, text

stations (stations+ils.dat)
  count, trouble, stations: camp_id, told (fields of the line), then texts: tacan_channel, tacan_band, callsign,
  tacan_range, tacan_type, tower_uhf, tower_vhf, ils_1, ils_2, ils_3, ils_4, ops_uhf, ground_uhf, approach_uhf,
  lso_uhf, atis_vhf, tower_voice, ground_voice, approach_voice, atis_voice

theater (.tdf)
  definition       its words and what they tell: name, desc, bitmap, campaigndir, terraindir, artdir, moviedir,
                   uisounddir, objectdir, misctexdir, 3ddatadir, sounddir, specialdbdir, tileset, simdatadir, mintacan
  root             what its paths are relative to
  folders          key, told, used, folder, exists
  tables, records, classes  as of objects
  map_size         map units on a side
  terrain_files    map, block_table, posts, tile_sets, highest, grid, grid_header, height_map, text
  ground_cover_file
  heights          heights_from, size, lowest, highest (feet), sea (map units of it), has_corner, longitude, latitude,
                   notes, at: x, y, height
  models           as of objects
  general_strings, camp_objects, stations, campaigns  as of a folder of campaigns

theater list (theater.lst)
  root, theaters: entry, definition_file, name, trouble

installation
  root, list_file, listed (as theaters of a list), theaters (as theater), pilots, configurations

prefix (a Wine prefix, or its system.reg)
  messages, installations: key, install_dir, current_theater, pilot, folder, installation

heights (.L2, .O2, .BIL, HeightMap.raw)
  files (as terrain_files), and the fields of heights
terrain (a theater's folder of it)
  map_size, terrain_files, ground_cover_file, heights
terrain map (theater.map)
  size, post_feet, highest_terrain_width, highest_terrain_height, last_near_level, levels: width, height;
  large_posts, has_corner, longitude, latitude
highest terrain (theater.mea)
  width, height, lowest, highest
ground cover (.thr)
  width, height, covers: cover, map_units
tile sets (texture.bin)
  tile_count, set_count, sets (the kind of each)
terrain text (Theater.txt)
  name, size, centre_latitude, centre_longitude, projection
grid header (.HDR beside a .BIL)
  size, skipped_bytes, big_endian

model directory (KoreaObj.HDR, .DXH)
  version, colours, palettes, textures, shapes, models, models_with_box, models_with_shape,
  asked (by --model): number, radius, box (least, most: forward, right, down in feet), dynamic_points,
  details: number, range, offset, size
shapes (KoreaObj.LOD, .DXL, with the directory beside it)
  directory_file, the fields of the directory, models_read, models_failed, first_failure, triangles, lines;
  or asked, each with shape
shape (.bml)
  shape: triangles, lines, lines_box (what the lines fit in)
model (Parent.dat, or its folder)
  radius, box, details: name, range, shape

mission, pilot (.ini, .lbk)
  callsign, settings_file (of a .lbk; without one beside it null, and it is no pilot's), title, has_steerpoints,
  groups: name, areas: name, type, x, y, radius (nautical miles), points: x, y, altitude, type (1 other, 3 target);
  uhf, vhf: the presets 1 to 20
folder (any other one with files of known kinds)
  files            the report of each
configuration (.cfg)
  f1, f2: the frequencies of the teams
)";
}

}  // namespace kestrel::falconinfo

#pragma once

class Services;

// The folder where the PDF printer writes its files: the working directory
// until the user picks another one (from the printing screens' menu).
namespace CartellaPdf {

// Asks for the folder and gives it to the PDF printer; a cancelled question
// changes nothing. Returns whether a folder was chosen.
bool Scegli(Services &services);

} // namespace CartellaPdf

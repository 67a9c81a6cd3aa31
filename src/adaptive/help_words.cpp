// The help of the words of neural networks and genetics.
#include "adaptive/help_words.h"

#include "kernel/keywords.h"
#include "language/help_table.h"

namespace {

constexpr HelpEntry ENTRIES[] = {
    {KW_adjust, "adjust: generate genetic(id) adjust(lo,hi,start,spread) runs the generations and answers an automatic mutation rate for each object (not stored: meta rand genetic(id)=c,m sets it); traj(id) .. law(id) adjust fits a law to the rows", "genetic(1) func(1); generate genetic(1) particle(8,6) rand; generate genetic(1) adjust(0.0001,0.001)"},
    {KW_genetic, "genetic(id) alphabet(\"01\") func(\"f\") a population of strings, f(object, string) their fitness (func(1) built in); generate genetic(id) particle(n,L) rand (or alea) n random strings of L-1 letters; generate(g) genetic(id) error(e) up to g generations until every fitness reaches 1-e, the count below it; genetic(id) particle(i,..) reads strings, =\"..\" writes them (0 appends); validate genetic(id) scores them, var genetic(id) the mean, cut genetic(id) the crossover log, meta rand genetic(id)=c,m the rates", "genetic(1) func(1); generate genetic(1) particle(8,6) rand; generate(5) genetic(1); genetic(1) particle(1,2)"},
    {KW_network, "network(id) fac(n1,n2,..) motif(inputs) law(outputs) makes a layered network (near: recurrent, texture: a self-organising map); generate network(id) validate(passes) coe(c) learns; generate inv law(v) network(id) the pattern of an output", "network(1) fac(2,3,1) motif(0,0,0,1,1,0,1,1) law(0,1,1,0); generate network(1) validate(100)"},
    {KW_neuron, "neuron: a sub-element word, the neurons of a network: neuron(k) network(id) reads them", "network(1) fac(2,2,1); neuron(1) network(1)"},
};

}  // namespace

void install_adaptive_help() { help_register("Networks and genetics", ENTRIES); }
